// A property sheet with one page in a thread of its own, and when it is there for its user.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <cstddef>
#include <functional>

#include "platform/unique_resource.h"

namespace kvn::bench {

// Milliseconds since the page was asked for.
struct OpeningTimes {
    double firstInput = 0;  // a key that is posted as soon as the sheet is there has been handled
    double firstPaint = 0;  // the page has painted itself for the first time
    double idle = 0;        // nothing is left to do
};

// What is done besides, in the sheet's thread.
struct SheetWork {
    std::function<void()> before;
    std::function<void(HWND sheet)> whenOpen;  // while nothing is left to do
};

using PageMaker = HPROPSHEETPAGE (*)();

OpeningTimes OpenSheet(PageMaker makePage, const SheetWork& work = {});

// KvnMouseUtil.dll's page; null when there is none.
HPROPSHEETPAGE OurPage();

// The module of the page and its dialog templates, loaded once and for good; null when it is not beside this program.
HMODULE PageModule();

// Carries the sheet's Apply out.
void Apply(HWND sheet);

// The button pane of the sheet's only page, ours or a reference; null when there is none.
HWND ButtonPaneOf(HWND sheet);

// While it lives, counts the messages that windows of this thread get.
class [[nodiscard]] MessageCount {
public:
    MessageCount();
    MessageCount(const MessageCount&) = delete;
    MessageCount& operator=(const MessageCount&) = delete;
    ~MessageCount() = default;

    static std::size_t Count();

private:
    platform::Owned<HHOOK, &UnhookWindowsHookEx> hook;
};

}  // namespace kvn::bench

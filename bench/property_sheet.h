// A property sheet with one page on its own thread, and the times until the user can use it.
#pragma once

#include <windows.h>

#include <prsht.h>

#include <cstddef>
#include <functional>

#include "platform/unique_resource.h"

namespace kvn::bench {

// Milliseconds since the page was asked for.
struct OpeningTimes {
    double firstInput = 0;  // a key that was posted as soon as the sheet existed is handled
    double firstPaint = 0;  // the page has painted itself for the first time
    double idle = 0;        // nothing is left to do
};

// Further work on the sheet's thread.
struct SheetWork {
    std::function<void()> before;
    std::function<void(HWND sheet)> whenOpen;  // once nothing is left to do
};

using PageMaker = HPROPSHEETPAGE (*)();

OpeningTimes OpenSheet(PageMaker makePage, const SheetWork& work = {});

// KvnMouseUtil.dll's page; null if there is none.
HPROPSHEETPAGE OurPage();

// The module of the page and its dialog templates, loaded once and kept; null if it is not beside this program.
HMODULE PageModule();

// Carries out the sheet's Apply.
void Apply(HWND sheet);

// The button pane of the sheet's only page, ours or a reference; null if there is none.
HWND ButtonPaneOf(HWND sheet);

// While it lives, counts the messages to windows of this thread.
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

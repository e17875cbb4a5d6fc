#include "tests/end_to_end/sheet_driver.h"

#include <commctrl.h>
#include <prsht.h>

#include "resources/resource.h"
#include "tests/end_to_end/combo_driver.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/combo_contents.h"
#include "tests/support/message_box_watcher.h"
#include "tests/support/narrow_text.h"
#include "tests/support/tab_contents.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kSheetTitle[] = L"Mouse Properties";

HWND FindDialog(DWORD processId, const std::wstring& title) {
    return FindTopLevelWindowOf(processId, [&](HWND window) {
        return IsWindowVisible(window) && ClassOf(window) == kDialogClass && TitleOf(window) == title;
    });
}

}  // namespace

Dialog::Dialog(DWORD hostProcessId, const std::wstring& title)
    : processId(hostProcessId),
      dialog(WaitFor("the dialog \"" + test::Narrow(title) + "\"",
                     [&] {
                         const HWND found = FindDialog(hostProcessId, title);
                         return found != nullptr && GetForegroundWindow() == found ? found : nullptr;
                     })),
      owner(GetWindow(dialog, GW_OWNER)) {}

HWND Dialog::Control(int id) const {
    const HWND control = GetDlgItem(dialog, id);
    if (control == nullptr) throw StoryError(Describe(dialog) + " has no control " + std::to_string(id));
    return control;
}

void Dialog::Click(int id) const {
    end_to_end::Click(Control(id));
}

void Dialog::WaitUntilClosed() const {
    WaitFor("the end of a dialog", [this] { return !IsWindow(dialog); });
    // The dialog below may have gone with it, or may already be below the next one.
    WaitFor("the window below a dialog", [this] {
        return !IsWindow(owner) || IsWindowEnabled(owner) ||
               FindTopLevelWindowOf(processId, [this](HWND window) {
                   return IsWindowVisible(window) && GetWindow(window, GW_OWNER) == owner;
               }) != nullptr;
    });
}

void Dialog::WaitForFocus(int id) const {
    WaitFor("the focus on control " + std::to_string(id), [&] { return FocusOf(dialog) == Control(id); });
}

std::wstring Dialog::Message() const {
    return test::TextOfMessageBox(dialog);
}

std::wstring AnswerMessage(DWORD processId, int button) {
    const Dialog box(processId, kMessageTitle);
    const std::wstring message = box.Message();
    box.Click(button);
    box.WaitUntilClosed();
    return message;
}

Sheet::Sheet(DWORD hostProcessId)
    : processId(hostProcessId),
      sheet(WaitFor("the sheet", [&] { return FindDialog(hostProcessId, kSheetTitle); })),
      page(WaitFor("the page", [this] { return reinterpret_cast<HWND>(Send(sheet, PSM_GETCURRENTPAGEHWND)); })),
      buttonPane(PaneWith(IDC_PANE_RESET)),
      gesturePane(PaneWith(IDC_GESTURES_LIST)) {
    WaitFor("the focus on the page's tabs", [this] { return Focused() == IDC_PAGE_TAB; });
    SetForegroundWindow(sheet);
    WaitFor("the sheet in the foreground", [this] { return GetForegroundWindow() == sheet; });
}

HWND Sheet::PaneWith(int id) const {
    for (HWND child = GetWindow(page, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (ClassOf(child) == kDialogClass && GetDlgItem(child, id) != nullptr) return child;
    }
    throw StoryError("the page has no pane with the control " + std::to_string(id));
}

HWND Sheet::Control(int id) const {
    for (const HWND parent : {page, buttonPane, sheet}) {
        if (const HWND control = GetDlgItem(parent, id)) return control;
    }
    throw StoryError("the sheet has no control " + std::to_string(id));
}

int Sheet::Focused() const {
    const HWND focus = FocusOf(sheet);
    return focus == nullptr ? 0 : GetDlgCtrlID(focus);
}

void Sheet::Click(int id) const {
    end_to_end::Click(Control(id));
}

void Sheet::ClickTab(int index) const {
    const HWND tabs = Control(IDC_PAGE_TAB);
    POINT middle = MiddleOf(test::PlaceOfTab(tabs, index));
    MapWindowPoints(tabs, nullptr, &middle, 1);
    ClickAt(middle);
}

void Sheet::Close(int button) const {
    Click(button);
    WaitFor("the end of the sheet", [this] { return !IsWindow(sheet); });
}

void Sheet::Apply() const {
    if (!CanApply()) throw StoryError("Apply is disabled");
    Click(kApplyButton);
    WaitFor("Apply to be done", [this] { return !CanApply(); });
}

int Sheet::MoveFocus(int direction) const {
    const HWND before = FocusOf(sheet);
    if (direction > 0) {
        PressKey(VK_TAB);
    } else {
        PressTogether({VK_LSHIFT, VK_TAB});
    }
    WaitFor("the focus to leave " + Describe(before), [&] {
        const HWND now = FocusOf(sheet);
        return now != nullptr && now != before;
    });
    return Focused();
}

void Sheet::MoveFocusTo(int id) const {
    constexpr int kLongestWay = 40;
    for (int step = 0; Focused() != id; ++step) {
        if (step == kLongestWay) throw StoryError("Tab does not lead to control " + std::to_string(id));
        MoveFocus(1);
    }
}

std::optional<int> Sheet::Chosen(int combo) const {
    return test::SelectedData(Control(combo));
}

std::wstring Sheet::ChosenText(int combo) const {
    return test::SelectedText(Control(combo));
}

int Sheet::EntryCount(int combo) const {
    return test::EntryCountOf(Control(combo));
}

void Sheet::ChooseByMouse(int combo, int data) const {
    end_to_end::ChooseByMouse(Control(combo), data);
}

void Sheet::ChooseEntryByMouse(int combo, int index) const {
    end_to_end::ChooseEntryByMouse(Control(combo), index);
}

int Sheet::Position(int trackbar) const {
    return static_cast<int>(Send(Control(trackbar), TBM_GETPOS));
}

}  // namespace kvn::end_to_end

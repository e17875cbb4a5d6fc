// Uses the open "Mouse Properties" sheet, and the dialogs above it, as a user does; reads them by messages.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace kvn::end_to_end {

// The sheet's own button, beside IDOK and IDCANCEL.
inline constexpr int kApplyButton = 0x3021;

// A dialog that a process shows above the sheet.
class Dialog {
public:
    // Waits until the process shows a dialog with this title.
    Dialog(DWORD hostProcessId, const std::wstring& title);

    DWORD ProcessId() const { return processId; }
    HWND Window() const { return dialog; }
    HWND Control(int id) const;
    void Click(int id) const;
    // Waits until the dialog has closed and the window below it takes input again, has closed as well, or is below
    // another dialog.
    void WaitUntilClosed() const;

    void WaitForFocus(int id) const;

    // The text of a message box.
    std::wstring Message() const;

private:
    DWORD processId;
    HWND dialog;
    HWND owner;
};

inline constexpr wchar_t kMessageTitle[] = L"KORVEN mouse settings tool";

// Waits for the page's message box, closes it with this button, and returns its text.
std::wstring AnswerMessage(DWORD processId, int button);

class Sheet {
public:
    // Waits until the process shows the sheet with the focus on the page's tab control, as the host's options ask.
    explicit Sheet(DWORD hostProcessId);

    DWORD ProcessId() const { return processId; }
    HWND Window() const { return sheet; }
    // A control of the page, of its pane for buttons, or of the sheet.
    HWND Control(int id) const;
    HWND Page() const { return page; }
    HWND ButtonPane() const { return buttonPane; }
    HWND GesturePane() const { return gesturePane; }

    bool IsEnabled(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
    bool CanApply() const { return IsEnabled(kApplyButton); }
    // The id of the control that has the focus.
    int Focused() const;

    void Click(int id) const;
    // Clicks a tab of the page, counted from 0.
    void ClickTab(int index) const;
    // Clicks OK or Cancel, and waits until the sheet has closed.
    void Close(int button) const;
    // Clicks Apply, and waits until the sheet disables it, which shows that the apply is done.
    void Apply() const;

    // Tab or, with a negative sign, Shift+Tab; returns the newly focused control's id.
    int MoveFocus(int direction) const;
    void MoveFocusTo(int id) const;

    // Item data of the selected entry; nothing if none is selected.
    std::optional<int> Chosen(int combo) const;
    std::wstring ChosenText(int combo) const;
    int EntryCount(int combo) const;
    // Opens the list with a click and clicks the entry with this data.
    void ChooseByMouse(int combo, int data) const;
    // The same, by the entry's index.
    void ChooseEntryByMouse(int combo, int index) const;
    int Position(int trackbar) const;

private:
    HWND PaneWith(int id) const;

    DWORD processId;
    HWND sheet;
    HWND page;
    HWND buttonPane;
    HWND gesturePane;
};

}  // namespace kvn::end_to_end

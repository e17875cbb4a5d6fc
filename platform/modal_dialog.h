// A modal dialog whose messages come to an object of ours.
#pragma once

#include <windows.h>

namespace kvn::platform {

// What a dialog ends with.
enum class DialogResult : INT_PTR { Accepted = 1, Cancelled = 2 };

class ModalDialog {
public:
    ModalDialog(const ModalDialog&) = delete;
    ModalDialog& operator=(const ModalDialog&) = delete;

    bool IsOpen() const { return isOpen; }

protected:
    ModalDialog() = default;
    ~ModalDialog() = default;

    // Shows the dialog above the owner until it ends. True when it was accepted; false also when it cannot be made, or
    // set up to its end: half a dialog's OK would store half of what it was opened with.
    bool RunModal(HINSTANCE module, UINT dialogTemplate, HWND owner);
    void End(DialogResult result) const { EndDialog(window, static_cast<INT_PTR>(result)); }

    // Every message from WM_INITDIALOG on, but no command while one is carried out: nobody can press a button while
    // another dialog stands before this one. FALSE leaves it to Windows; for WM_INITDIALOG it means that the focus
    // stays where it was put.
    virtual INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    HINSTANCE Module() const { return resources; }
    HWND Window() const { return window; }
    HWND Control(int control) const { return GetDlgItem(window, control); }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR SetUp(WPARAM wParam, LPARAM lParam);
    INT_PTR CarryOut(WPARAM wParam, LPARAM lParam);

    HINSTANCE resources = nullptr;
    HWND window = nullptr;
    bool isOpen = false;
    bool isCarryingOut = false;  // a command
};

}  // namespace kvn::platform

// A modal dialog whose messages an object handles.
#pragma once

#include <windows.h>

namespace kvn::platform {

// The result of a dialog.
enum class DialogResult : INT_PTR { Accepted = 1, Cancelled = 2 };

class ModalDialog {
public:
    ModalDialog(const ModalDialog&) = delete;
    ModalDialog& operator=(const ModalDialog&) = delete;

    bool IsOpen() const { return isOpen; }

protected:
    ModalDialog() = default;
    ~ModalDialog() = default;

    // Shows the dialog above the owner until it ends. True if it was accepted. Also false if it cannot be created or
    // completely set up: OK in an incomplete dialog would lose settings.
    bool RunModal(HINSTANCE module, UINT dialogTemplate, HWND owner);
    void End(DialogResult result) const { EndDialog(window, static_cast<INT_PTR>(result)); }

    // Gets every message from WM_INITDIALOG on, but no command while another one is running: the user cannot press a
    // button while a second dialog is in front of this one. FALSE leaves the message to Windows; for WM_INITDIALOG it
    // means that the dialog has set the focus itself.
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
    bool isCarryingOut = false;  // while a command runs
};

}  // namespace kvn::platform

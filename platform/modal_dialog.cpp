#include "platform/modal_dialog.h"

#include "platform/boundary.h"
#include "platform/raised_flag.h"
#include "platform/subclass.h"

namespace kvn::platform {

bool ModalDialog::RunModal(HINSTANCE module, UINT dialogTemplate, HWND owner) {
    resources = module;
    return DialogBoxParamW(module, MAKEINTRESOURCEW(dialogTemplate), owner, Procedure,
                           reinterpret_cast<LPARAM>(this)) == static_cast<INT_PTR>(DialogResult::Accepted);
}

INT_PTR CALLBACK ModalDialog::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        auto* const opened = reinterpret_cast<ModalDialog*>(lParam);
        opened->window = dialog;
        opened->isOpen = true;
    }
    auto* const self = ObjectOf<ModalDialog>(dialog);
    if (self == nullptr) return FALSE;
    if (message == WM_INITDIALOG) return self->SetUp(wParam, lParam);
    if (message == WM_COMMAND) return self->CarryOut(wParam, lParam);
    const auto answer = AtBoundary<INT_PTR>(FALSE, [&] { return self->OnMessage(message, wParam, lParam); });
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, 0);
        self->isOpen = false;
    }
    return answer;
}

INT_PTR ModalDialog::SetUp(WPARAM wParam, LPARAM lParam) {
    constexpr INT_PTR kBrokenOff = -1;
    const auto answer = AtBoundary(kBrokenOff, [&] { return OnMessage(WM_INITDIALOG, wParam, lParam); });
    if (answer == kBrokenOff) End(DialogResult::Cancelled);
    return answer;
}

INT_PTR ModalDialog::CarryOut(WPARAM wParam, LPARAM lParam) {
    if (isCarryingOut) return TRUE;
    const RaisedFlag flag(isCarryingOut);
    return AtBoundary<INT_PTR>(FALSE, [&] { return OnMessage(WM_COMMAND, wParam, lParam); });
}

}  // namespace kvn::platform

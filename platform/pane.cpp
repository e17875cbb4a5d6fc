#include "platform/pane.h"

#include "platform/boundary.h"
#include "platform/subclass.h"

namespace kvn::platform {

Pane::Pane(UINT dialogTemplate, IPaneOwner& paneOwner) : templateId(dialogTemplate), owner(paneOwner) {}

HWND Pane::Create(HINSTANCE module, HWND page) {
    resources = module;
    window = CreateDialogParamW(module, MAKEINTRESOURCEW(templateId), page, IgnoreMessage, 0);
    return window;
}

void Pane::TakeOver() {
    previousProcedure = Subclass(window, Procedure, this);
}

LRESULT CALLBACK Pane::Procedure(HWND pane, UINT message, WPARAM wParam, LPARAM lParam) {
    Pane& self = *ObjectOf<Pane>(pane);
    return AtBoundary<LRESULT>(0, [&] { return self.HandleMessage(message, wParam, lParam); });
}

LRESULT Pane::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    // The host may destroy the page while one of its dialogs is open, and the call that opened the dialog still needs
    // the owner.
    const std::shared_ptr<void> owners = owner.KeepAlive();
    if (message == WM_COMMAND) {
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        owner.OnPaneCommand(window, wParam, lParam);
    } else if (message == WM_HSCROLL) {
        owner.OnPaneScroll(reinterpret_cast<HWND>(lParam));
    } else if (const auto answer = OnMessage(message, wParam, lParam)) {
        return *answer;
    }
    return CallWindowProcW(previousProcedure, window, message, wParam, lParam);
}

}  // namespace kvn::platform

#include "platform/dialog_thread.h"

#include <windows.h>

#include <atomic>
#include <utility>

#include "platform/boundary.h"
#include "platform/thread_start.h"

namespace kvn::platform {

struct DialogThread::State {
    std::function<void()> show;
    std::atomic<bool> isOpen = false;
    std::atomic<DWORD> thread = 0;  // while the dialog is open
};

namespace {

BOOL CALLBACK BringToFront(HWND window, LPARAM) {
    if (!IsWindowVisible(window)) return TRUE;
    SetForegroundWindow(GetLastActivePopup(window));
    return FALSE;
}

}  // namespace

DialogThread::DialogThread() : state(std::make_shared<State>()) {}

void DialogThread::Open(std::function<void()> show) {
    if (state->isOpen.exchange(true)) {
        EnumThreadWindows(state->thread, BringToFront, 0);
        return;
    }
    state->show = std::move(show);
    const auto body = [](State& shared) {
        shared.thread = GetCurrentThreadId();
        Completes(shared.show);
        shared.isOpen = false;
    };
    bool isStarted = false;
    Completes([&] { isStarted = static_cast<bool>(StartThread<State>(state, body, THREAD_PRIORITY_NORMAL)); });
    if (!isStarted) state->isOpen = false;
}

}  // namespace kvn::platform

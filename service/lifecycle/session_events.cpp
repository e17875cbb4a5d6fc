#include "service/lifecycle/session_events.h"

#include <algorithm>
#include <array>

#include "platform/system_library.h"

namespace kvn::service {
namespace {

struct ChangeRow {
    WPARAM change;
    bool isBack;
    bool isActive;
};

// A locked session still has the screen.
constexpr std::array kChanges{
    ChangeRow{WTS_CONSOLE_CONNECT, true, true},      ChangeRow{WTS_REMOTE_CONNECT, true, true},
    ChangeRow{WTS_SESSION_UNLOCK, true, true},       ChangeRow{WTS_SESSION_LOCK, false, true},
    ChangeRow{WTS_CONSOLE_DISCONNECT, false, false}, ChangeRow{WTS_REMOTE_DISCONNECT, false, false},
};

constexpr DWORD kThisSessionOnly = 0;

}  // namespace

void SessionEvents::Watch(HWND window) {
    using Register = BOOL WINAPI(HWND, DWORD);
    auto* const watch = platform::SystemFunction<Register>(L"wtsapi32.dll", "WTSRegisterSessionNotification");
    if (watch != nullptr) watch(window, kThisSessionOnly);
}

std::optional<LRESULT> SessionEvents::OnMessage(const Message& message) {
    switch (message.id) {
        case WM_WTSSESSION_CHANGE:
            OnSessionChange(message.wParam);
            return 0;
        case WM_POWERBROADCAST:
            OnPower(message.wParam);
            return TRUE;
        case WM_SETTINGCHANGE:
            if (message.wParam == SPI_SETMOUSEBUTTONSWAP) outlets.onSwapped(GetSystemMetrics(SM_SWAPBUTTON) != 0);
            return 0;
        case WM_QUERYENDSESSION:
            return TRUE;
        case WM_ENDSESSION:
            if (message.wParam != FALSE) outlets.onEnd();
            return 0;
        default:
            return std::nullopt;
    }
}

void SessionEvents::OnSessionChange(WPARAM change) {
    const auto row = std::ranges::find(kChanges, change, &ChangeRow::change);
    if (row == kChanges.end()) return;
    isActive = row->isActive;
    row->isBack ? outlets.onReturned() : outlets.onLeft();
}

void SessionEvents::OnPower(WPARAM event) const {
    if (event == PBT_APMRESUMEAUTOMATIC || event == PBT_APMRESUMESUSPEND) outlets.onResumed();
}

}  // namespace kvn::service

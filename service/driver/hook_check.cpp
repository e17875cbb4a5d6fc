#include "service/driver/hook_check.h"

#include <utility>

#include "service/page/window_numbers.h"

namespace kvn::service {
namespace {

constexpr UINT kPatienceMilliseconds = 1'000;
// How much earlier or later than the press the hook may have seen it; tick counts wrap around.
constexpr std::uint32_t kEarlierMilliseconds = 250, kLaterMilliseconds = 60'000;
constexpr UINT_PTR kCheckTimer = static_cast<UINT_PTR>(Timer::HookCheck);

}  // namespace

bool HasMissed(std::uint32_t lastPressOfHook, std::uint32_t press) {
    return lastPressOfHook - press + kEarlierMilliseconds > kEarlierMilliseconds + kLaterMilliseconds;
}

void HookCheck::OnPress(HWND window, std::uint32_t time) {
    latest = time;
    if (pending) return;
    pending = time;
    SetTimer(window, kCheckTimer, kPatienceMilliseconds, nullptr);
}

std::optional<LRESULT> HookCheck::OnMessage(const Message& message) {
    if (message.id != WM_TIMER || message.wParam != kCheckTimer) return std::nullopt;
    KillTimer(message.window, kCheckTimer);
    if (const auto press = std::exchange(pending, std::nullopt)) Judge(message.window, *press);
    return 0;
}

void HookCheck::Judge(HWND window, std::uint32_t press) {
    if (HasMissed(outlets.lastPressOfHook(), press)) return outlets.onBlind();
    if (latest != press) OnPress(window, latest);
}

}  // namespace kvn::service

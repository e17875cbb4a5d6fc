#include "service/driver/hook_check.h"

#include <utility>

#include "service/page/window_numbers.h"

namespace kvn::service {
namespace {

constexpr UINT kPatienceMilliseconds = 1'000;
// By then Windows no longer waits for the hook, so a release that the hook has not seen by now was missed.
constexpr int kLooksAtRelease = 3;
// The hook's last press may be this much earlier or later than the press; tick counts wrap around. In a flood of
// presses the window may get its report minutes after the hook, which has seen many others since.
constexpr std::uint32_t kEarlierMilliseconds = 250, kLaterMilliseconds = 24 * 60 * 60'000;
constexpr UINT_PTR kPressTimer = static_cast<UINT_PTR>(Timer::HookCheck);
constexpr UINT_PTR kReleaseTimer = static_cast<UINT_PTR>(Timer::ReleaseCheck);

}  // namespace

bool HasMissed(std::uint32_t lastPressOfHook, std::uint32_t press) {
    return lastPressOfHook - press + kEarlierMilliseconds > kEarlierMilliseconds + kLaterMilliseconds;
}

// Each release restarts the waiting time of all.
void HookCheck::OnButtons(HWND window, const ButtonChange& change) {
    released = (released & ~change.pressed) | change.released;
    if (change.released != 0) AwaitReleases(window);
    if (change.pressed != 0) OnPress(window, change.time);
}

void HookCheck::OnPress(HWND window, std::uint32_t time) {
    latest = time;
    if (pending) return;
    pending = time;
    SetTimer(window, kPressTimer, kPatienceMilliseconds, nullptr);
}

std::optional<LRESULT> HookCheck::OnMessage(const Message& message) {
    const bool isOfPress = message.wParam == kPressTimer;
    if (message.id != WM_TIMER || (!isOfPress && message.wParam != kReleaseTimer)) return std::nullopt;
    KillTimer(message.window, message.wParam);
    isOfPress ? JudgePress(message.window) : JudgeReleases(message.window);
    return 0;
}

void HookCheck::JudgePress(HWND window) {
    const auto press = std::exchange(pending, std::nullopt);
    if (!press) return;
    if (HasMissed(outlets.lastPressOfHook(), *press)) return outlets.onBlind();
    if (latest != *press) OnPress(window, latest);
}

void HookCheck::AwaitReleases(HWND window) {
    looksLeft = kLooksAtRelease;
    SetTimer(window, kReleaseTimer, kPatienceMilliseconds, nullptr);
}

void HookCheck::JudgeReleases(HWND window) {
    released &= outlets.heldButtons();
    if (released == 0 || --looksLeft <= 0) return ReportMissed(std::exchange(released, 0));
    SetTimer(window, kReleaseTimer, kPatienceMilliseconds, nullptr);
}

void HookCheck::ReportMissed(std::uint32_t missed) const {
    for (std::size_t slot = 0; slot < kButtonCount; ++slot) {
        if ((missed >> slot & 1U) != 0) outlets.onReleaseMissed(static_cast<model::ButtonSlot>(slot));
    }
}

}  // namespace kvn::service

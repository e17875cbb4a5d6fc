#include "service/input/hook_thread.h"

#include "platform/thread_start.h"
#include "service/input/hook_loop.h"

namespace kvn::service {
namespace {

constexpr DWORD kLongestStart = 5'000;  // milliseconds
constexpr DWORD kLongestFarewell = 1'000;

}  // namespace

// Shared with the thread: if the thread hangs, it is left behind with the loop.
class HookThread::Loop {
public:
    Loop(Performer& orderTaker, MouseActivity& mouseActivity)
        : shared(std::make_shared<HookLoop>(orderTaker, mouseActivity)) {}
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;
    ~Loop() {
        shared->Send(Command{.kind = CommandKind::Quit});
        if (thread) WaitForSingleObject(thread.Get(), kLongestFarewell);
    }

    bool Start() {
        thread = platform::StartThread(
            shared, +[](HookLoop& started) { started.Run(); }, THREAD_PRIORITY_HIGHEST);
        if (thread) WaitForSingleObject(shared->Ready(), kLongestStart);
        return shared->isInstalled;
    }

    std::shared_ptr<HookLoop> shared;

private:
    platform::UniqueKernelObject thread;
};

HookThread::HookThread(Performer& orderTaker, MouseActivity& mouseActivity)
    : loop(std::make_unique<Loop>(orderTaker, mouseActivity)) {}

HookThread::~HookThread() = default;

bool HookThread::Start() {
    return loop->Start();
}

void HookThread::Use(const EngineSettings& settings) {
    loop->shared->Send(settings);
}

void HookThread::Pause(bool isPaused) {
    loop->shared->Send(Command{.kind = CommandKind::Pause, .isOn = isPaused});
}

void HookThread::LeaveSession() {
    loop->shared->Send(Command{.kind = CommandKind::LeaveSession});
}

void HookThread::ReleaseMissed(model::ButtonSlot physicalButton) {
    loop->shared->Send(Command{.kind = CommandKind::ReleaseMissed, .button = physicalButton});
}

void HookThread::Swapped(bool areSwapped) {
    loop->shared->Send(Command{.kind = CommandKind::Swapped, .isOn = areSwapped});
}

void HookThread::GestureEditBegin() {
    loop->shared->Send(Command{.kind = CommandKind::GestureEditBegin});
}

void HookThread::GestureEditEnd() {
    loop->shared->Send(Command{.kind = CommandKind::GestureEditEnd});
}

void HookThread::GestureEditForgotten() {
    loop->shared->Send(Command{.kind = CommandKind::GestureEditForgotten});
}

void HookThread::Question(model::ButtonSlot physicalButton) {
    loop->shared->Send(Command{.kind = CommandKind::Question, .button = physicalButton, .time = GetTickCount()});
}

void HookThread::WindowInFront() {
    loop->shared->Send(Command{.kind = CommandKind::WindowInFront});
}

void HookThread::Reinstall() {
    loop->shared->Send(Command{.kind = CommandKind::Reinstall});
}

bool HookThread::IsInstalled() const {
    return loop->shared->isInstalled;
}

std::uint32_t HookThread::HeldButtons() const {
    return loop->shared->heldButtons;
}

bool HookThread::IsGestureEdited() const {
    return loop->shared->isGestureEdited;
}

std::uint64_t HookThread::PressCount() const {
    return loop->shared->pressCount;
}

std::uint32_t HookThread::LastPress() const {
    return loop->shared->lastPress;
}

PressFeed& HookThread::Presses() {
    return loop->shared->presses;
}

}  // namespace kvn::service

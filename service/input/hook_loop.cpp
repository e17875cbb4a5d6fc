#include "service/input/hook_loop.h"

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "service/input/key_sending.h"

namespace kvn::service {
namespace {

constexpr UINT kWakeMessage = WM_APP;
constexpr UINT kTickPeriod = 100;  // milliseconds

// A hook's callback has no parameter for its owner; only one loop at a time has a hook.
std::atomic<HookLoop*> hookOwner = nullptr;

// The usual guard may allocate memory. Here an exception just lets the event pass.
bool OwnerKeeps(WPARAM message, LPARAM details) noexcept {
    HookLoop* const owner = hookOwner.load(std::memory_order_acquire);
    if (owner == nullptr) return false;
    try {
        return owner->Keeps(message, *reinterpret_cast<const MSLLHOOKSTRUCT*>(details));
    } catch (...) {
        return false;
    }
}

LRESULT CALLBACK OnMouseHook(int code, WPARAM message, LPARAM details) {
    if (code == HC_ACTION && OwnerKeeps(message, details)) return 1;
    return CallNextHookEx(nullptr, code, message, details);
}

struct CommandRow {
    CommandKind kind;
    void (*carryOut)(HookLoop&, const Command&);
};

constexpr std::array<CommandRow, 12> kCommands{{
    {CommandKind::UseSettings, [](HookLoop& l, const Command& /*c*/) { l.UseNewestSettings(); }},
    {CommandKind::Pause, [](HookLoop& l, const Command& c) { l.engine.OnPause(c.isOn, l.orders); }},
    {CommandKind::LeaveSession, [](HookLoop& l, const Command& /*c*/) { l.engine.OnSessionLeft(l.orders); }},
    {CommandKind::ReleaseMissed, [](HookLoop& l, const Command& c) { l.engine.OnReleaseMissed(c.button, l.orders); }},
    {CommandKind::Swapped, [](HookLoop& l, const Command& c) { l.engine.OnSwapped(c.isOn); }},
    {CommandKind::GestureEditBegin, [](HookLoop& l, const Command& /*c*/) { l.engine.OnGestureEditBegin(l.orders); }},
    {CommandKind::GestureEditEnd, [](HookLoop& l, const Command& /*c*/) { l.engine.OnGestureEditEnd(); }},
    {CommandKind::GestureEditForgotten, [](HookLoop& l, const Command& /*c*/) { l.engine.OnGestureEditForgotten(); }},
    {CommandKind::Question, [](HookLoop& l, const Command& c) { l.engine.OnQuestion(c.button, c.time); }},
    {CommandKind::WindowInFront, [](HookLoop& l, const Command& /*c*/) { l.engine.OnWindowInFront(l.orders); }},
    {CommandKind::Reinstall, [](HookLoop& l, const Command& /*c*/) { l.Install(); }},
    {CommandKind::Quit, [](HookLoop& l, const Command& /*c*/) { l.Quit(); }},
}};

model::ButtonSlot ControlOf(const MouseEvent& event) {
    if (event.kind != MouseEventKind::Tilt) return event.control;
    return event.delta < 0 ? model::ButtonSlot::TiltLeft : model::ButtonSlot::TiltRight;
}

}  // namespace

HookLoop::HookLoop(Performer& orderTaker, MouseActivity& mouseActivity)
    : performer(orderTaker), activity(mouseActivity) {}

void HookLoop::Run() {
    MSG message;
    PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);  // creates the queue, so that others can wake it
    threadId = GetCurrentThreadId();
    platform::Completes([&] { CarryOutCommands(); });
    Install();
    NoteHeldButtons();
    SetEvent(ready.Get());
    while (!isEnding && GetMessageW(&message, nullptr, 0, 0) > 0) {
        platform::Completes([&] { Serve(message); });
    }
    hook.Reset();
    hookOwner = nullptr;
    isInstalled = false;
    engine.OnSessionLeft(orders);
    HandOver();
}

void HookLoop::Serve(const MSG& message) {
    CarryOutCommands();
    if (message.message == WM_TIMER) Tick();
    WatchTicks();
}

bool HookLoop::Send(const Command& command) {
    const bool isSent = mailbox.Put(command);
    Wake();
    return isSent;
}

bool HookLoop::Send(const EngineSettings& settings) {
    const bool isSent = mailbox.PutSettings(settings);
    Wake();
    return isSent;
}

// Until the thread has its queue, it need not be woken.
void HookLoop::Wake() {
    if (const DWORD thread = threadId; thread != 0) PostThreadMessageW(thread, kWakeMessage, 0, 0);
}

// The new hook comes before the old one goes, so that no event is missed in between. Only one sees each event: this
// thread receives none during the change.
void HookLoop::Install() {
    hookOwner.store(this, std::memory_order_release);
    hook = UniqueHook(SetWindowsHookExW(WH_MOUSE_LL, OnMouseHook, GetModuleHandleW(nullptr), 0));
    isInstalled = static_cast<bool>(hook);
}

// The hook is installed before, so that no release is missed.
void HookLoop::NoteHeldButtons() {
    for (std::size_t slot = 0; slot < kButtonKeys.size(); ++slot) {
        if (GetAsyncKeyState(kButtonKeys[slot]) < 0) engine.OnHeldBefore(static_cast<model::ButtonSlot>(slot));
    }
    Publish();
}

void HookLoop::UseNewestSettings() {
    if (const EngineSettings* const settings = mailbox.TakeSettings()) engine.OnSettings(*settings, orders);
}

void HookLoop::CarryOutCommands() {
    if (mailbox.IsEmpty()) return;
    Command command;
    while (mailbox.Take(command)) CarryOut(command);
    Publish();
}

void HookLoop::CarryOut(const Command& command) {
    const auto row = std::ranges::find(kCommands, command.kind, &CommandRow::kind);
    if (row != kCommands.end()) row->carryOut(*this, command);
    presses.Report(orders);
    HandOver();
}

// Moves bypass the engine: nothing is decided about them, and there may be a thousand a second.
bool HookLoop::Keeps(WPARAM message, const MSLLHOOKSTRUCT& details) {
    NoteActivity();
    if (message == WM_MOUSEMOVE) return false;
    const std::optional<MouseEvent> event = EventOf(message, details);
    return event && Decide(*event) == Verdict::Keep;
}

Verdict HookLoop::Decide(const MouseEvent& event) {
    CarryOutCommands();
    if (const bool hasRoom = performer.HasRoom(); hasRoom == isOverloaded) {
        isOverloaded = !hasRoom;
        engine.OnOverload(isOverloaded);
    }
    const std::uint64_t pressesBefore = engine.PressCount();
    const Verdict verdict = engine.OnMouse(event, orders);
    presses.Report(orders);
    if (engine.PressCount() != pressesBefore) ReportPress(event, verdict);
    HandOver();
    NoteEvent(event);
    Publish();
    WatchTicks();
    return verdict;
}

void HookLoop::ReportPress(const MouseEvent& event, Verdict verdict) {
    const DecidedPress press{ControlOf(event), verdict, engine.IsPaused(), engine.Profile()};
    presses.ReportPress(press, orders);
}

void HookLoop::Tick() {
    POINT cursor;
    if (!engine.WantsTicks() || !GetCursorPos(&cursor)) return;
    engine.OnTick({cursor.x, cursor.y}, orders);
    HandOver();
    Publish();
}

void HookLoop::WatchTicks() {
    if (engine.WantsTicks() == (ticks != 0)) return;
    if (ticks == 0) {
        ticks = SetTimer(nullptr, 0, kTickPeriod, nullptr);
    } else {
        KillTimer(nullptr, ticks);
        ticks = 0;
    }
}

void HookLoop::HandOver() {
    if (orders.All().empty()) return;
    performer.Take(orders);
    orders.Clear();
}

void HookLoop::Publish() {
    heldButtons.store(engine.HeldButtons(), std::memory_order_release);
    pressCount.store(engine.PressCount(), std::memory_order_release);
    isGestureEdited.store(engine.IsGestureEdited(), std::memory_order_release);
}

// Reads the clock, since a program that makes input may give it any time. Stores the time before it looks at the flag:
// the sleeper sets the flag first and then looks at the time.
void HookLoop::NoteActivity() {
    activity.lastEvent.store(GetTickCount());
    if (activity.isSomeoneAsleep.load() && activity.isSomeoneAsleep.exchange(false)) SetEvent(activity.wake.Get());
}

// A press that a program makes also shows that the hook is alive.
void HookLoop::NoteEvent(const MouseEvent& event) {
    if (event.kind == MouseEventKind::Press) lastPress.store(GetTickCount(), std::memory_order_release);
}

}  // namespace kvn::service

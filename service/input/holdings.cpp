#include "service/input/holdings.h"

#include <algorithm>
#include <mutex>

#include "service/engine/notch.h"

namespace kvn::service {
namespace {

constexpr std::uint32_t kScrollPeriod = 100;  // milliseconds
// Windows takes no input while it shows another desktop, as when the session is locked.
constexpr std::uint32_t kReleaseRetryPeriod = 250;
constexpr std::int32_t kNaturalSpeed = 4;

WORD ButtonKeyOf(const FunctionRow& row) {
    const auto index = static_cast<std::size_t>(row.button);
    return index < kButtonKeys.size() ? kButtonKeys[index] : WORD{VK_LBUTTON};
}

// Whether the user already holds down the button that this function presses.
bool IsPassed(WORD buttonKey, std::uint32_t passedButtons) {
    const auto found = std::ranges::find(kButtonKeys, buttonKey);
    return found != kButtonKeys.end() && (passedButtons >> (found - kButtonKeys.begin()) & 1U) != 0;
}

Chord ChordOf(const Order& order, const FunctionRow& row) {
    return row.action == Action::PressChosenKeys ? Chord(order.keys.codes) : Chord(row.keys);
}

Chord SwitchingChord() {
    constexpr std::array<model::KeyCode, 2> kAltTab{VK_MENU, VK_TAB};
    return Chord(kAltTab);
}

// Left is negative.
std::int32_t ScrollStepOf(const Order& order, const FunctionRow& row) {
    const std::int32_t step = kNotch * order.horizontalSpeed / kNaturalSpeed;
    return row.action == Action::ScrollLeft ? -step : step;
}

void ScrollBy(std::int32_t amount) {
    InputBatch batch;
    batch.HorizontalWheel(amount);
    batch.Send();
}

// The user's keyboard settings: the delay is 0 to 3 for 250 to 1000 ms, the rate 0 to 31 for 2.5 to 30 a second.
std::uint32_t KeyboardDelay() {
    int delay = 1;
    SystemParametersInfoW(SPI_GETKEYBOARDDELAY, 0, &delay, 0);
    return 250 * static_cast<std::uint32_t>(std::clamp(delay, 0, 3) + 1);
}

std::uint32_t KeyboardPeriod() {
    DWORD rate = 31;
    SystemParametersInfoW(SPI_GETKEYBOARDSPEED, 0, &rate, 0);
    return static_cast<std::uint32_t>(1000.0 / (2.5 + std::min<DWORD>(rate, 31) * 27.5 / 31));
}

// If the user holds the same button, there is nothing to press or release.
void BeginButton(HeldKeys& keys, const Order& order, const FunctionRow& row, Holding& holding) {
    if (!IsPassed(ButtonKeyOf(row), order.passedButtons)) holding.held = keys.PressButton(ButtonKeyOf(row));
}

void BeginKeys(HeldKeys& keys, const Order& order, const FunctionRow& row, Holding& holding) {
    holding.held = keys.Press(ChordOf(order, row));
    if (row.kind != FunctionKind::Repeats || holding.held.chord.LastPlainKey() == 0) return;
    holding.period = KeyboardPeriod();
    holding.due = GetTickCount() + KeyboardDelay();
}

void BeginSwitching(HeldKeys& keys, const Order& /*order*/, const FunctionRow& /*row*/, Holding& holding) {
    holding.held = keys.PressAndKeepModifiers(SwitchingChord());
}

void BeginScrolling(HeldKeys& /*keys*/, const Order& order, const FunctionRow& row, Holding& holding) {
    holding.scrollStep = ScrollStepOf(order, row);
    holding.period = kScrollPeriod;
    holding.due = GetTickCount() + kScrollPeriod;
    ScrollBy(holding.scrollStep);
}

void ActButton(HeldKeys& keys, const Order& order, const FunctionRow& row) {
    if (!IsPassed(ButtonKeyOf(row), order.passedButtons)) keys.Click(ButtonKeyOf(row));
}

void ActKeys(HeldKeys& keys, const Order& order, const FunctionRow& row) {
    keys.Tap(ChordOf(order, row));
}

void ActSwitching(HeldKeys& keys, const Order& /*order*/, const FunctionRow& /*row*/) {
    keys.Tap(SwitchingChord());
}

void ActScrolling(HeldKeys& /*keys*/, const Order& order, const FunctionRow& row) {
    ScrollBy(ScrollStepOf(order, row));
}

void ActDoubleClick(HeldKeys& keys, const Order& order, const FunctionRow& /*row*/) {
    if (IsPassed(VK_LBUTTON, order.passedButtons)) return;
    keys.Click(VK_LBUTTON);
    keys.Click(VK_LBUTTON);
}

void BeginDoubleClick(HeldKeys& keys, const Order& order, const FunctionRow& row, Holding& /*holding*/) {
    ActDoubleClick(keys, order, row);
}

struct ActionRow {
    Action action;
    void (*begin)(HeldKeys&, const Order&, const FunctionRow&, Holding&);
    void (*act)(HeldKeys&, const Order&, const FunctionRow&);
};

constexpr std::array<ActionRow, 7> kInputActions{{
    {Action::PressButton, BeginButton, ActButton},
    {Action::PressKeys, BeginKeys, ActKeys},
    {Action::PressChosenKeys, BeginKeys, ActKeys},
    {Action::SwitchPrograms, BeginSwitching, ActSwitching},
    {Action::DoubleClick, BeginDoubleClick, ActDoubleClick},
    {Action::ScrollLeft, BeginScrolling, ActScrolling},
    {Action::ScrollRight, BeginScrolling, ActScrolling},
}};

const ActionRow* FindInputAction(const FunctionRow& row) {
    const auto found = std::ranges::find(kInputActions, row.action, &ActionRow::action);
    return found == kInputActions.end() ? nullptr : &*found;
}

std::uint32_t MillisecondsUntil(std::uint32_t due, std::uint32_t now) {
    return static_cast<std::int32_t>(due - now) <= 0 ? 0 : due - now;
}

}  // namespace

bool Holdings::CanDo(const FunctionRow& row) {
    return FindInputAction(row) != nullptr;
}

void Holdings::Begin(const Order& order, const FunctionRow& row) {
    const ActionRow* const action = FindInputAction(row);
    const std::lock_guard guard(lock);
    const auto free = std::ranges::find(holdings, false, &Holding::isUsed);
    if (action == nullptr || isClosed) return;
    if (WasEnded(order.ticket) || free == holdings.end()) return action->act(keys, order, row);
    *free = Holding{.isUsed = true, .ticket = order.ticket};
    action->begin(keys, order, row, *free);
}

void Holdings::Act(const Order& order, const FunctionRow& row) {
    const ActionRow* const action = FindInputAction(row);
    const std::lock_guard guard(lock);
    if (action != nullptr && !isClosed) action->act(keys, order, row);
}

void Holdings::End(Ticket ticket, std::uint32_t passedButtons) {
    const std::lock_guard guard(lock);
    const auto isMeant = [=](const Holding& holding) {
        return holding.isUsed && !holding.isOver && holding.ticket == ticket;
    };
    const auto found = std::ranges::find_if(holdings, isMeant);
    if (found == holdings.end()) return RememberEnded(ticket);
    if (found->held.count == 1 && IsPassed(found->held.keys[0], passedButtons)) keys.LeaveToUser(found->held);
    EndHolding(*found);
}

void Holdings::Close() {
    const std::lock_guard guard(lock);
    isClosed = true;
    for (Holding& holding : holdings) {
        if (holding.isUsed) EndHolding(holding);
    }
}

bool Holdings::DoRepeat() {
    const std::lock_guard guard(lock);
    return std::ranges::any_of(holdings, [](const Holding& holding) { return holding.isUsed && holding.period != 0; });
}

std::optional<std::uint32_t> Holdings::Repeat(std::uint32_t now) {
    const std::lock_guard guard(lock);
    std::optional<std::uint32_t> wait;
    for (Holding& holding : holdings) {
        if (!holding.isUsed || holding.period == 0) continue;
        if (MillisecondsUntil(holding.due, now) == 0) RepeatHolding(holding, now);
        const std::uint32_t until = MillisecondsUntil(holding.due, now);
        wait = std::min(wait.value_or(until), until);
    }
    return wait;
}

void Holdings::EndHolding(Holding& holding) {
    holding.isUsed = holding.isOver = !keys.Release(holding.held);
    holding.period = kReleaseRetryPeriod;
    holding.due = GetTickCount() + kReleaseRetryPeriod;
}

// Late repeats are not made up for.
void Holdings::RepeatHolding(Holding& holding, std::uint32_t now) {
    if (holding.isOver) return EndHolding(holding);
    if (holding.scrollStep != 0) {
        ScrollBy(holding.scrollStep);
    } else {
        keys.Repeat(holding.held);
    }
    holding.due += holding.period;
    if (MillisecondsUntil(holding.due, now) == 0) holding.due = now + holding.period;
}

bool Holdings::WasEnded(Ticket ticket) {
    const auto found = std::ranges::find(ended, std::optional(ticket));
    if (found == ended.end()) return false;
    found->reset();
    return true;
}

void Holdings::RememberEnded(Ticket ticket) {
    ended[endedCount++ % ended.size()] = ticket;
}

}  // namespace kvn::service

#include "service/engine/engine.h"

#include <algorithm>
#include <span>

#include "model/enum_array.h"

namespace kvn::service {
namespace {

using model::ButtonSlot;
using model::FunctionCode;
using model::ScreenPoint;

// Orders that represent a press in the log.
constexpr bool IsForWorker(OrderKind kind) {
    return kind <= OrderKind::Note;
}

// Left and right change places when the buttons are swapped.
constexpr ButtonSlot OtherOf(ButtonSlot control) {
    if (control == ButtonSlot::Left) return ButtonSlot::Right;
    if (control == ButtonSlot::Right) return ButtonSlot::Left;
    return control;
}

constexpr std::uint32_t BitOf(std::size_t physicalButton) {
    return 1U << physicalButton;
}

// Whether a gesture can have such a function.
constexpr bool CanAct(FunctionKind kind) {
    return kind == FunctionKind::Held || kind == FunctionKind::Once || kind == FunctionKind::Repeats;
}

std::int32_t SignOf(FunctionCode scroll) {
    return FindFunction(scroll)->action == Action::ScrollLeft ? -1 : 1;
}

}  // namespace

Verdict Engine::OnMouse(const MouseEvent& event, Orders& orders) {
    // Moves pass.
    static constexpr model::EnumArray<MouseEventKind, Handler, 5> kHandlers{
        {&Engine::OnPress, &Engine::OnRelease, &Engine::OnTilt, &Engine::OnWheel, nullptr}};
    if (event.isInjected) return Verdict::Pass;
    Expire(event.time);
    const Handler handler = kHandlers[event.kind];
    return handler == nullptr ? Verdict::Pass : (this->*handler)(event, orders);
}

void Engine::Expire(std::uint32_t time) {
    page.Expire(time);
    push.Expire(time);
    wheel.Expire(time);
}

Verdict Engine::OnPress(const MouseEvent& event, Orders& orders) {
    const std::size_t button = PhysicalOf(event.control);
    if (button >= presses.size()) return Verdict::Pass;
    Press& press = presses[button];
    End(press, orders);  // in case its release was missed
    EndFlight(orders);
    ++pressCount;
    heldButtons |= BitOf(button);
    press = PressOf(event.control);
    press.verdict = Decide(press, event, orders);
    return press.verdict;
}

Verdict Engine::OnRelease(const MouseEvent& event, Orders& orders) {
    const std::size_t button = PhysicalOf(event.control);
    if (button >= presses.size()) return Verdict::Pass;
    heldButtons &= ~BitOf(button);
    Press& press = presses[button];
    if (!press.isKnown) return Verdict::Pass;
    press.isKnown = false;
    if (IsDrawing() && drawingButton == button) CompleteStroke(orders);
    End(press, orders);
    return press.verdict;
}

Verdict Engine::Decide(Press& press, const MouseEvent& event, Orders& orders) {
    // What is natural passes.
    static constexpr model::EnumArray<FunctionKind, Decision, 6> kDecisions{
        {nullptr, &Engine::Begin, &Engine::Act, &Engine::Begin, &Engine::Draw, &Engine::Swallow}};
    if (isPaused || isOverloaded) return Verdict::Pass;
    if (page.IsAsked(PhysicalOf(press.control))) return KeepFor(press, Cause::Asked, orders);
    const bool isGestureButton = press.function.kind == FunctionKind::Gesture;
    if (IsDrawing() && press.control == ButtonSlot::Right && !isGestureButton) {
        GiveStrokeUp(orders);
        return KeepFor(press, Cause::GivesUp, orders);
    }
    const Decision decision = kDecisions[press.function.kind];
    return decision == nullptr ? Verdict::Pass : (this->*decision)(press, event, orders);
}

Verdict Engine::Begin(Press& press, const MouseEvent&, Orders& orders) {
    if (++lastTicket == 0) ++lastTicket;  // 0 names nothing
    press.ticket = lastTicket;
    orders.Add(OrderOf(press, OrderKind::Begin));
    return Verdict::Keep;
}

Verdict Engine::Act(Press& press, const MouseEvent&, Orders& orders) {
    orders.Add(OrderOf(press, OrderKind::Act));
    return Verdict::Keep;
}

Verdict Engine::Draw(Press& press, const MouseEvent& event, Orders& orders) {
    if (page.IsEditing()) return KeepFor(press, Cause::Asked, orders);
    if (IsDrawing()) return KeepFor(press, Cause::Function, orders);
    drawingButton = PhysicalOf(press.control);
    BeginStroke(event.place, orders);
    return Verdict::Keep;
}

Verdict Engine::Swallow(Press& press, const MouseEvent&, Orders& orders) {
    return KeepFor(press, Cause::Function, orders);
}

Verdict Engine::KeepFor(const Press& press, Cause cause, Orders& orders) {
    Order note = OrderOf(press, OrderKind::Note);
    note.cause = cause;
    if (cause != Cause::Function) {
        note.function = model::kFunctionNone;
        note.keys = {};
    }
    orders.Add(note);
    return Verdict::Keep;
}

Verdict Engine::OnTilt(const MouseEvent& event, Orders& orders) {
    if (event.delta == 0) return Verdict::Pass;
    EndFlight(orders);
    const ButtonSlot control = event.delta < 0 ? ButtonSlot::TiltLeft : ButtonSlot::TiltRight;
    if (!push.Takes(control)) BeginPush(control);
    const bool isFirst = push.AddReport(event.time);
    if (push.AsPress().verdict == Verdict::Keep && !push.IsOver()) Push(event.delta, isFirst, orders);
    return push.AsPress().verdict;
}

void Engine::BeginPush(ButtonSlot control) {
    ++pressCount;
    Press press = PressOf(control);
    const bool isNatural = isPaused || isOverloaded || press.function.kind == FunctionKind::Natural;
    press.verdict = isNatural ? Verdict::Pass : Verdict::Keep;
    push.Begin(press);
}

void Engine::Push(std::int32_t delta, bool isFirst, Orders& orders) {
    const FunctionRow& row = *FindFunction(push.AsPress().function.code);
    const bool isScroll = row.action == Action::ScrollLeft || row.action == Action::ScrollRight;
    if (isScroll) return PushScroll(delta, isFirst, orders);
    if (row.kind == FunctionKind::Repeats) return PushNotches(delta, isFirst, orders);
    if (!isFirst) return;
    orders.Add(OrderOf(push.AsPress(), row.kind == FunctionKind::Nothing ? OrderKind::Note : OrderKind::Act));
}

// If the first report is too small for a unit, it is still noted.
void Engine::PushScroll(std::int32_t delta, bool isFirst, Orders& orders) {
    const std::int32_t amount = push.AddForScroll(delta, HorizontalSpeedOf(settings));
    if (amount == 0 && !isFirst) return;
    Order order = OrderOf(push.AsPress(), amount == 0 ? OrderKind::Note : OrderKind::Scroll);
    order.amount = amount * SignOf(order.function);
    order.isOfPress = isFirst;
    orders.Add(order);
}

void Engine::PushNotches(std::int32_t delta, bool isFirst, Orders& orders) {
    const std::int32_t notches = push.AddForNotches(delta);
    Order order = OrderOf(push.AsPress(), notches == 0 ? OrderKind::Note : OrderKind::Act);
    order.isOfPress = isFirst;
    if (notches == 0 && isFirst) orders.Add(order);
    for (std::int32_t notch = 0; notch < notches; ++notch) {
        orders.Add(order);
        order.isOfPress = false;
    }
}

Verdict Engine::OnWheel(const MouseEvent& event, Orders& orders) {
    if (isPaused || event.delta == 0 || !IsOn(settings.flying)) return Verdict::Pass;
    const std::int32_t notches = wheel.AddReport(event.delta);
    if (notches == 0) return Verdict::Pass;
    if (wheel.IsAgainstFlight(notches)) EndFlight(orders);
    if (!wheel.Count(notches, event.time, settings.flying)) return Verdict::Pass;
    const std::int32_t rate = FirstRateOf(settings.flying);
    Order begin = PlainOrder(OrderKind::FlyBegin, {});
    begin.amount = notches < 0 ? -rate : rate;
    orders.Add(begin);
    return Verdict::Pass;
}

void Engine::OnSettings(const EngineSettings& next, Orders& orders) {
    settings = next;
    const auto isOther = [this](const Press& press) {
        return !FunctionOf(settings, press.control).IsSameAs(press.function);
    };
    for (Press& press : presses) {
        if (press.ticket != 0 && isOther(press)) End(press, orders);
    }
    if (isOther(push.AsPress())) push.EndFunction();
    const Press& drawing = presses[drawingButton];
    if (IsDrawing() && (drawing.profile != settings.profile || isOther(drawing))) GiveStrokeUp(orders);
    if (IsOn(settings.flying)) return;
    EndFlight(orders);
    wheel.Forget();
}

void Engine::OnPause(bool pauses, Orders& orders) {
    isPaused = pauses;
    if (isPaused) EndAll(orders);
}

void Engine::OnSessionLeft(Orders& orders) {
    EndAll(orders);
    heldButtons = 0;
}

void Engine::OnHeldBefore(ButtonSlot physicalButton) {
    const auto button = static_cast<std::size_t>(physicalButton);
    if (button >= presses.size()) return;
    heldButtons |= BitOf(button);
    presses[button] = PressOf(ExchangedIfSwapped(physicalButton));
    presses[button].verdict = Verdict::Pass;
}

void Engine::OnReleaseMissed(ButtonSlot physicalButton, Orders& orders) {
    const auto button = static_cast<std::size_t>(physicalButton);
    if (button >= presses.size()) return;
    heldButtons &= ~BitOf(button);
    End(presses[button], orders);
    presses[button].isKnown = false;
}

void Engine::OnOverload(bool overloaded) {
    isOverloaded = overloaded;
}

void Engine::OnSwapped(bool areSwapped) {
    areButtonsSwapped = areSwapped;
}

void Engine::OnGestureEditBegin(Orders& orders) {
    page.BeginEdit();
    GiveStrokeUp(orders);
}

void Engine::OnGestureEditEnd() {
    page.EndEdit();
}

void Engine::OnGestureEditForgotten() {
    page.ForgetEdits();
}

bool Engine::IsGestureEdited() const {
    return page.IsEditing();
}

void Engine::OnQuestion(ButtonSlot physicalButton, std::uint32_t time) {
    page.Ask(static_cast<std::size_t>(physicalButton), time);
}

std::uint32_t Engine::HeldButtons() const {
    return heldButtons;
}

bool Engine::WantsTicks() const {
    return IsDrawing();
}

void Engine::OnTick(ScreenPoint cursor, Orders& orders) {
    if (!IsDrawing()) return;
    stroke.Take({.cursor = cursor, .isHeld = true});
    orders.Add(PlainOrder(OrderKind::StrokeMove, cursor));
}

void Engine::OnWindowInFront(Orders& orders) {
    EndFlight(orders);
}

void Engine::BeginStroke(ScreenPoint place, Orders& orders) {
    stroke.Take({.cursor = place, .isHeld = true});
    orders.Add(PlainOrder(OrderKind::StrokeBegin, place));
}

void Engine::CompleteStroke(Orders& orders) {
    const auto drawn = stroke.Take({});
    orders.Add(PlainOrder(OrderKind::StrokeEnd, {}));
    if (drawn) ActOnStroke(*drawn, orders);
}

void Engine::GiveStrokeUp(Orders& orders) {
    if (!IsDrawing()) return;
    orders.Add(PlainOrder(OrderKind::StrokeEnd, {}));
    stroke = {};
    KeepFor(presses[drawingButton], Cause::GivenUp, orders);
}

void Engine::ActOnStroke(const model::GestureNotice& drawn, Orders& orders) const {
    Order order = OrderOf(presses[drawingButton], OrderKind::Note);
    order.stroke = drawn.directions;
    order.function = model::kFunctionNone;
    order.cause = Cause::UnknownStroke;
    if (drawn.count == 0) {
        order.kind = OrderKind::Act;
        order.cause = Cause::NoStroke;
        order.function = NaturalFunctionOf(order.control);
    } else if (const EngineGesture* const gesture = FindGesture(drawn)) {
        const AssignedFunction function = FunctionOf(*gesture);
        order.kind = CanAct(function.kind) ? OrderKind::Act : OrderKind::Note;
        order.cause = Cause::Gesture;
        order.function = function.code;
        order.keys = function.keys;
    }
    orders.Add(order);
}

const EngineGesture* Engine::FindGesture(const model::GestureNotice& drawn) const {
    const auto gestures =
        std::span(settings.gestures).first(std::min<std::size_t>(settings.gestureCount, kMaxGestures));
    const auto found = std::ranges::find(gestures, drawn.directions, &EngineGesture::stroke);
    return found == gestures.end() ? nullptr : &*found;
}

void Engine::End(Press& press, Orders& orders) {
    if (IsDrawing() && &press == &presses[drawingButton]) GiveStrokeUp(orders);
    if (press.ticket == 0) return;
    orders.Add(OrderOf(press, OrderKind::End));
    press.ticket = 0;
}

void Engine::EndAll(Orders& orders) {
    for (Press& press : presses) End(press, orders);
    push.EndFunction();
    EndFlight(orders);
    wheel.Forget();
}

void Engine::EndFlight(Orders& orders) {
    if (!wheel.IsFlying()) return;
    wheel.Stop();
    orders.Add(PlainOrder(OrderKind::FlyEnd, {}));
}

ButtonSlot Engine::ExchangedIfSwapped(ButtonSlot slot) const {
    return areButtonsSwapped ? OtherOf(slot) : slot;
}

std::size_t Engine::PhysicalOf(ButtonSlot control) const {
    return static_cast<std::size_t>(ExchangedIfSwapped(control));
}

Press Engine::PressOf(ButtonSlot control) const {
    Press press;
    press.isKnown = true;
    press.verdict = Verdict::Keep;  // until it is decided
    press.control = control;
    press.function = FunctionOf(settings, control);
    press.controlFunction = settings.functions[control];
    press.profile = settings.profile;
    return press;
}

// By slot, as programs see the buttons.
std::uint32_t Engine::PassedButtonsBeside(const Press& press) const {
    std::uint32_t passed = 0;
    for (std::size_t button = 0; button < presses.size(); ++button) {
        const Press& other = presses[button];
        const bool isHeld = other.isKnown && (heldButtons & BitOf(button)) != 0;
        if (isHeld && &other != &press && other.verdict == Verdict::Pass)
            passed |= BitOf(static_cast<std::size_t>(other.control));
    }
    return passed;
}

Order Engine::OrderOf(const Press& press, OrderKind kind) const {
    Order order = PlainOrder(kind, {});
    order.control = press.control;
    order.isOfPress = IsForWorker(kind);
    order.controlFunction = press.controlFunction;
    order.function = press.function.code;
    order.keys = press.function.keys;
    order.ticket = press.ticket;
    order.profile = press.profile;
    order.passedButtons = PassedButtonsBeside(press);
    return order;
}

Order Engine::PlainOrder(OrderKind kind, ScreenPoint place) const {
    Order order;
    order.kind = kind;
    order.isOfPress = false;
    order.horizontalSpeed = HorizontalSpeedOf(settings);
    order.place = place;
    order.profile = settings.profile;
    return order;
}

}  // namespace kvn::service

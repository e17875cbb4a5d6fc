#include "tests/service_engine/engine_comparison.h"

#include <algorithm>
#include <vector>

#include "tests/service_engine/order_text.h"

namespace kvn::service {
namespace {

using enum model::ButtonSlot;

// The parts of an order that matter to the threads that carry it out.
std::string ComparedTextOf(const Order& order) {
    return order.kind <= OrderKind::End ? WholeTextOf(order) : TextOf(order);
}

// Within one event the sequence matters only among orders for the same thread: endings come before beginnings.
template <typename Range>
std::string TextOfAll(const Range& orders) {
    std::vector<std::string> texts;
    for (const Order& order : orders) texts.push_back(ComparedTextOf(order));
    std::ranges::sort(texts);
    std::string all;
    for (const std::string& text : texts) all += "\n  " + text;
    return all;
}

bool IsEvent(const EngineInput& input, MouseEventKind kind) {
    return input.kind == InputKind::Mouse && !input.mouse.isInjected && input.mouse.kind == kind;
}

bool EndsAll(const EngineInput& input) {
    return input.kind == InputKind::SessionLeft || (input.kind == InputKind::Pause && input.isOn);
}

std::ptrdiff_t CountOf(const Orders& orders, OrderKind kind) {
    return std::ranges::count(orders.All(), kind, &Order::kind);
}

bool HoldsLeftClick(const EngineSettings& settings) {
    const auto count = static_cast<std::size_t>(std::clamp(settings.controlCount, 0, 7));
    const auto& functions = settings.functions.items;
    return std::find(functions.begin(), functions.begin() + static_cast<std::ptrdiff_t>(count), 1) !=
           functions.begin() + static_cast<std::ptrdiff_t>(count);
}

}  // namespace

int PromiseCheck::PhysicalOf(model::ButtonSlot control) const {
    const int button = static_cast<int>(control);
    return button < 2 && areSwapped ? 1 - button : button;
}

std::string PromiseCheck::Check(const Engine& before, const Engine& after, const EngineInput& input, Verdict verdict,
                                const Orders& orders) {
    if (input.kind == InputKind::Settings) settings = *input.settings;
    if (input.kind == InputKind::Swapped) areSwapped = input.isOn;
    if (input.kind == InputKind::Mouse && input.mouse.isInjected) return CheckInjected(before, after, verdict, orders);
    if (input.kind == InputKind::ReleaseMissed && static_cast<std::size_t>(input.asked) < buttons.size()) {
        buttons[static_cast<std::size_t>(input.asked)].isDown = false;
    }
    std::string broken = CheckReleases(input, verdict);
    if (broken.empty()) broken = CheckTickets(input, orders);
    if (broken.empty()) broken = CheckOneOrderForEachPress(input, verdict, orders);
    if (broken.empty()) broken = CheckFlight(orders);
    if (broken.empty()) broken = CheckLeftClick(after, input);
    const bool isDrawing =
        CountOf(orders, OrderKind::StrokeBegin) + before.WantsTicks() - CountOf(orders, OrderKind::StrokeEnd) == 1;
    if (isDrawing != after.WantsTicks()) broken += "a stroke begins and ends once; ";
    if (orders.All().size() > 14) broken += "the orders of one event must fit; ";
    return broken;
}

std::string PromiseCheck::CheckInjected(const Engine& before, const Engine& after, Verdict verdict,
                                        const Orders& orders) const {
    const bool isSame = before.HeldButtons() == after.HeldButtons() && before.WantsTicks() == after.WantsTicks() &&
                        before.PressCount() == after.PressCount();
    const bool isUntouched = verdict == Verdict::Pass && orders.All().empty() && isSame;
    return isUntouched ? "" : "what a program makes passes and changes nothing; ";
}

std::string PromiseCheck::CheckReleases(const EngineInput& input, Verdict verdict) {
    if (IsEvent(input, MouseEventKind::Wheel) || IsEvent(input, MouseEventKind::Move)) {
        return verdict == Verdict::Pass ? "" : "moves and the wheel pass; ";
    }
    const bool isPress = IsEvent(input, MouseEventKind::Press);
    if (!isPress && !IsEvent(input, MouseEventKind::Release)) return "";
    Button& button = buttons[static_cast<std::size_t>(PhysicalOf(input.mouse.control))];
    const Verdict expected = button.isDown ? button.verdict : Verdict::Pass;
    button.isDown = isPress;
    button.verdict = verdict;
    return isPress || verdict == expected ? "" : "a release goes where its press went; ";
}

std::string PromiseCheck::CheckTickets(const EngineInput& input, const Orders& orders) {
    std::string broken;
    for (const Order& order : orders.All()) {
        if (order.kind == OrderKind::Begin) {
            if (!used.insert(order.ticket).second || order.ticket == 0) broken += "a ticket names one beginning; ";
            buttons[static_cast<std::size_t>(PhysicalOf(order.control))].ticket = order.ticket;
        } else if (order.kind == OrderKind::End) {
            const auto held = std::ranges::find(buttons, order.ticket, &Button::ticket);
            if (order.ticket == 0 || held == buttons.end()) broken += "what ends has begun and has not ended; ";
            if (held != buttons.end()) held->ticket = 0;
        }
    }
    for (const Button& button : buttons) {
        const bool mayHold = button.isDown && button.verdict == Verdict::Keep && !EndsAll(input);
        if (button.ticket != 0 && !mayHold) broken += "nothing is held longer than its button; ";
    }
    return broken;
}

// The press of a gesture button has its order at the stroke's end.
std::string PromiseCheck::CheckOneOrderForEachPress(const EngineInput& input, Verdict verdict,
                                                    const Orders& orders) const {
    const bool isPress = IsEvent(input, MouseEventKind::Press) && verdict == Verdict::Keep;
    const auto strokes = CountOf(orders, OrderKind::StrokeEnd);
    const auto expected = strokes + (isPress && CountOf(orders, OrderKind::StrokeBegin) == 0 ? 1 : 0);
    const auto found = std::ranges::count(orders.All(), true, &Order::isOfPress);
    const bool isRight = IsEvent(input, MouseEventKind::Tilt) ? found <= 1 : found == expected;
    return isRight ? "" : "each press that was kept has one order; ";
}

std::string PromiseCheck::CheckFlight(const Orders& orders) {
    for (const Order& order : orders.All()) {
        if (order.kind == OrderKind::FlyEnd && !isFlying) return "a flight that ends has begun; ";
        if (order.kind == OrderKind::FlyEnd) isFlying = false;
        if (order.kind == OrderKind::FlyBegin) isFlying = true;
    }
    return "";
}

// Checked on a copy, a second later, when no question of the page is valid any more.
std::string PromiseCheck::CheckLeftClick(const Engine& engine, const EngineInput& input) const {
    if (HoldsLeftClick(settings)) return "";
    Engine copy = engine;
    EngineInput click = input;
    click.kind = InputKind::Mouse;
    click.mouse = {
        .kind = MouseEventKind::Press, .control = Left, .delta = 0, .place = {}, .time = 0, .isInjected = false};
    click.time += 1000;
    Orders orders;
    const bool isPassed = Tell(copy, click, orders) == Verdict::Pass;
    click.mouse.kind = MouseEventKind::Release;
    return isPassed && Tell(copy, click, orders) == Verdict::Pass ? "" : "the left click stays in reach; ";
}

std::string EngineComparison::Hear(const EngineInput& input) {
    const Engine before = engine;
    return Compare(input, before);
}

std::string EngineComparison::Compare(const EngineInput& input, const Engine& before) {
    Orders orders;
    const Verdict verdict = Tell(engine, input, orders);
    const OracleAnswer& answer = oracle.Hear(input);
    std::string broken = promises.Check(before, engine, input, verdict, orders);
    if ((verdict == Verdict::Keep) != answer.isKept) broken += answer.isKept ? "it must be kept; " : "it must pass; ";
    if (!orders.All().empty() || !answer.orders.empty()) {
        const std::string said = TextOfAll(orders.All());
        const std::string expected = TextOfAll(answer.orders);
        if (said != expected) broken += "the engine orders" + said + "\nthe oracle" + expected + "\n";
    }
    return broken + CompareStates();
}

std::string EngineComparison::CompareStates() const {
    std::string broken;
    if (engine.HeldButtons() != oracle.HeldButtons()) broken += "other buttons are held; ";
    if (engine.WantsTicks() != oracle.IsDrawing()) broken += "a stroke is under way for one of both; ";
    if (engine.IsGestureEdited() != oracle.IsEdited()) broken += "a gesture is edited for one of both; ";
    if (engine.PressCount() != oracle.PressCount()) broken += "other presses are counted; ";
    return broken;
}

}  // namespace kvn::service

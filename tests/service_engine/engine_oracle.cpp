#include "tests/service_engine/engine_oracle.h"

#include <algorithm>
#include <string_view>

#include "tests/service_engine/oracle_judgements.h"

namespace kvn::service {
namespace {

using enum model::ButtonSlot;

constexpr int kButtons = 5;

bool IsOfTilt(model::ButtonSlot control) {
    return control == TiltLeft || control == TiltRight;
}

}  // namespace

// One letter for each code from 0 to 54.
char EngineOracle::KindOfCode(model::FunctionCode code) {
    constexpr std::string_view kKinds =
        "nhhhhhooo"      // 0 to 8
        "hooooo"         // 9 to 14
        "orrrhhhrrooo"   // 15 to 26
        "oooooorrngr-"   // 27 to 38
        "ooooooonoonno"  // 39 to 51
        "noo";           // 52 to 54
    static_assert(kKinds.size() == 55);
    return code >= 0 && code < 55 ? kKinds[static_cast<std::size_t>(code)] : 'n';
}

bool EngineOracle::IsUnusable(model::ButtonSlot control, Place at) const {
    const EngineSettings& settings = SettingsAt(at);
    const model::FunctionCode code = settings.functions[control];
    if (KindOfCode(code) == 'n') return true;
    if (code == 36 && IsOfTilt(control)) return true;
    if (code == 37 && !HasUsableKey(settings.keys[control])) return true;
    if (control != Left) return false;
    for (int other = 0; other < std::min(settings.controlCount, 7); ++other) {
        if (settings.functions.items[static_cast<std::size_t>(other)] == 1) return false;
    }
    return true;
}

char EngineOracle::KindAt(model::ButtonSlot control, Place at) const {
    const model::FunctionCode code = SettingsAt(at).functions[control];
    if (IsUnusable(control, at)) return 'n';
    if (code == NaturalCodeOf(control) && !(IsOfTilt(control) && SpeedAt(at) != 4)) return 'n';
    return KindOfCode(code);
}

bool EngineOracle::HasSameFunction(model::ButtonSlot control, Place before, Place now) const {
    const EngineSettings& was = SettingsAt(before);
    const EngineSettings& is = SettingsAt(now);
    const model::FunctionCode code = is.functions[control];
    if (was.functions[control] != code || IsUnusable(control, now)) return false;
    return code != 37 || was.keys[control] == is.keys[control];
}

const EngineSettings& EngineOracle::SettingsAt(Place at) const {
    static const EngineSettings kFirst;
    for (; at >= 0; --at) {
        if (At(at).input.kind == InputKind::Settings) return *At(at).input.settings;
    }
    return kFirst;
}

std::int32_t EngineOracle::SpeedAt(Place at) const {
    const std::int32_t speed = SettingsAt(at).horizontalSpeed;
    return IsGood(speed, 1, 8) ? speed : 4;
}

bool EngineOracle::SwitchAt(InputKind kind, Place at) const {
    for (; at >= 0; --at) {
        if (At(at).input.kind == kind) return At(at).input.isOn;
    }
    return false;
}

bool EngineOracle::IsMouse(Place at, MouseEventKind kind) const {
    return At(at).input.kind == InputKind::Mouse && At(at).input.mouse.kind == kind;
}

int EngineOracle::PhysicalAt(Place at) const {
    const int button = static_cast<int>(At(at).input.mouse.control);
    return button < 2 && SwitchAt(InputKind::Swapped, at) ? 1 - button : button;
}

bool EngineOracle::IsButton(Place at, MouseEventKind kind, int physical) const {
    return IsMouse(at, kind) && PhysicalAt(at) == physical;
}

bool EngineOracle::IsMissedRelease(Place at, int physical) const {
    return At(at).input.kind == InputKind::ReleaseMissed && static_cast<int>(At(at).input.asked) == physical;
}

bool EngineOracle::EndsEverything(Place at) const {
    const EngineInput& input = At(at).input;
    return input.kind == InputKind::SessionLeft || (input.kind == InputKind::Pause && input.isOn);
}

bool EngineOracle::IsWheelOffAt(Place at) const {
    return EndsEverything(at) || (At(at).input.kind == InputKind::Settings && !IsFlyingOn(*At(at).input.settings));
}

bool EngineOracle::IsAskedAt(int physical, Place at) const {
    for (Place k = at; k >= 0; --k) {
        const EngineInput& input = At(k).input;
        const bool isIt = input.kind == InputKind::Question && static_cast<int>(input.asked) == physical;
        if (isIt && At(at).input.time - input.time < 500) return true;
    }
    return false;
}

int EngineOracle::EditorsAt(Place at) const {
    int editors = 0;
    for (Place k = 0; k <= at; ++k) {
        const InputKind kind = At(k).input.kind;
        if (kind == InputKind::EditBegin) ++editors;
        if (kind == InputKind::EditEnd) editors = std::max(editors - 1, 0);
        if (kind == InputKind::EditForgotten) editors = 0;
    }
    return editors;
}

bool EngineOracle::HasOrder(Place at, OrderKind kind) const {
    return std::ranges::any_of(At(at).answer.orders, [kind](const Order& order) { return order.kind == kind; });
}

const OracleAnswer& EngineOracle::Hear(const EngineInput& input) {
    if (input.kind == InputKind::Mouse && input.mouse.isInjected) return injected;
    history.push_back({input, {}});
    const bool wasDrawing = StrokeUnderWay() >= 0;
    AnswerEndings();
    AnswerStroke();
    if (IsMouse(Now(), MouseEventKind::Wheel)) history.back().notches = NotchesNow();
    const Place flight = FlightUnderWay();
    if (flight >= 0 && StopsFlight(flight)) {
        Order end;
        end.kind = OrderKind::FlyEnd;
        Add(end);
    } else {
        history.back().isInFlight = flight >= 0;
    }
    if (IsMouse(Now(), MouseEventKind::Press)) AnswerPress(wasDrawing);
    if (IsMouse(Now(), MouseEventKind::Release)) AnswerRelease();
    if (IsMouse(Now(), MouseEventKind::Tilt) && input.mouse.delta != 0) AnswerTilt();
    if (IsMouse(Now(), MouseEventKind::Wheel)) AnswerWheel();
    return history.back().answer;
}

// The press of a physical button whose release has not come yet.
EngineOracle::Place EngineOracle::OpenPress(int physical) const {
    for (Place k = Now() - 1; k >= 0; --k) {
        if (IsButton(k, MouseEventKind::Press, physical)) return k;
        if (IsButton(k, MouseEventKind::Release, physical) || IsMissedRelease(k, physical)) return -1;
    }
    return -1;
}

// The function that a press began and nothing has ended.
Ticket EngineOracle::LiveTicket(Place press) const {
    Ticket ticket = 0;
    for (Place k = press; k < Now(); ++k) {
        for (const Order& order : At(k).answer.orders) {
            if (k == press && order.kind == OrderKind::Begin) ticket = order.ticket;
            if (order.kind == OrderKind::End && order.ticket == ticket) return 0;
        }
    }
    return ticket;
}

bool EngineOracle::EndsPress(Place press) const {
    const Place now = Now();
    const int physical = PhysicalAt(press);
    if (EndsEverything(now) || IsMissedRelease(now, physical)) return true;
    if (IsButton(now, MouseEventKind::Press, physical) || IsButton(now, MouseEventKind::Release, physical)) return true;
    return At(now).input.kind == InputKind::Settings && !HasSameFunction(At(press).input.mouse.control, press, now);
}

void EngineOracle::AnswerEndings() {
    for (int physical = 0; physical < kButtons; ++physical) {
        const Place press = OpenPress(physical);
        if (press < 0 || !EndsPress(press)) continue;
        const Ticket ticket = LiveTicket(press);
        if (ticket == 0) continue;
        Order end = OrderOf(press, OrderKind::End);
        end.ticket = ticket;
        Add(end);
    }
}

void EngineOracle::AnswerPress(bool wasDrawing) {
    const Place now = Now();
    OracleAnswer& answer = history.back().answer;
    history.back().isNewPress = true;
    if (SwitchAt(InputKind::Pause, now) || SwitchAt(InputKind::Overload, now)) return;
    const bool hasEnded =
        std::ranges::any_of(answer.orders, [](const Order& order) { return order.kind == OrderKind::StrokeEnd; });
    const char kind = KindAt(At(now).input.mouse.control, now);
    answer.isKept = true;
    if (IsAskedAt(PhysicalAt(now), now)) return Note(now, Cause::Asked);
    const Place stroke = StrokeUnderWay();
    if (stroke >= 0 && IsPressThatGivesUp(stroke)) return Note(now, Cause::GivesUp);
    answer.isKept = kind != 'n';
    if (kind == 'o') Add(OrderOf(now, OrderKind::Act));
    if (kind == '-') Note(now, Cause::Function);
    if (kind == 'h' || kind == 'r') {
        Order begin = OrderOf(now, OrderKind::Begin);
        begin.ticket = ++beginnings;
        Add(begin);
    }
    if (kind != 'g') return;
    if (EditorsAt(now) > 0) return Note(now, Cause::Asked);
    if (wasDrawing && !hasEnded) return Note(now, Cause::Function);
    Order begin;
    begin.kind = OrderKind::StrokeBegin;
    begin.place = At(now).input.mouse.place;
    Add(begin);
}

void EngineOracle::AnswerRelease() {
    const Place press = OpenPress(PhysicalAt(Now()));
    history.back().answer.isKept = press >= 0 && At(press).answer.isKept;
}

std::uint32_t EngineOracle::HeldButtons() const {
    std::uint32_t held = 0;
    for (int physical = 0; physical < kButtons; ++physical) {
        for (Place k = Now(); k >= 0; --k) {
            if (At(k).input.kind == InputKind::SessionLeft) break;
            if (IsButton(k, MouseEventKind::Release, physical) || IsMissedRelease(k, physical)) break;
            if (!IsButton(k, MouseEventKind::Press, physical)) continue;
            held |= 1U << physical;
            break;
        }
    }
    return held;
}

bool EngineOracle::IsDrawing() const {
    for (Place k = Now(); k >= 0; --k) {
        if (HasOrder(k, OrderKind::StrokeBegin)) return true;
        if (HasOrder(k, OrderKind::StrokeEnd)) return false;
    }
    return false;
}

std::uint64_t EngineOracle::PressCount() const {
    const auto count = std::ranges::count_if(history, &Entry::isNewPress);
    return static_cast<std::uint64_t>(count);
}

bool EngineOracle::IsEdited() const {
    return EditorsAt(Now()) > 0;
}

// An order of a press, or of the push whose first report this is.
Order EngineOracle::OrderOf(Place press, OrderKind kind) const {
    const EngineSettings& settings = SettingsAt(press);
    const MouseEvent& event = At(press).input.mouse;
    const auto tilt = event.delta < 0 ? TiltLeft : TiltRight;
    Order order;
    order.kind = kind;
    order.control = event.kind == MouseEventKind::Tilt ? tilt : event.control;
    order.isOfPress = kind != OrderKind::End;
    order.controlFunction = settings.functions[order.control];
    order.function = order.controlFunction;
    if (order.function == 37) order.keys = settings.keys[order.control];
    order.horizontalSpeed = SpeedAt(Now());
    order.profile = settings.profile;
    order.passedButtons = PassedButtons(event.kind == MouseEventKind::Tilt ? -1 : PhysicalAt(press));
    return order;
}

bool EngineOracle::IsAbout(Place at, int physical) const {
    return IsButton(at, MouseEventKind::Press, physical) || IsButton(at, MouseEventKind::Release, physical) ||
           IsMissedRelease(at, physical);
}

// The buttons that programs see as held, except one.
std::uint32_t EngineOracle::PassedButtons(int butPhysical) const {
    std::uint32_t passed = 0;
    for (int physical = 0; physical < kButtons; ++physical) {
        if (physical == butPhysical || IsAbout(Now(), physical)) continue;
        Place k = Now() - 1;
        while (k >= 0 && !IsAbout(k, physical) && At(k).input.kind != InputKind::SessionLeft) --k;
        const bool isPassed = k >= 0 && IsButton(k, MouseEventKind::Press, physical) && !At(k).answer.isKept;
        if (isPassed) passed |= 1U << static_cast<unsigned>(At(k).input.mouse.control);
    }
    return passed;
}

void EngineOracle::Note(Place press, Cause cause) {
    Order note = OrderOf(press, OrderKind::Note);
    note.cause = cause;
    if (cause != Cause::Function) {
        note.function = 0;
        note.keys = {};
    }
    Add(note);
}

}  // namespace kvn::service

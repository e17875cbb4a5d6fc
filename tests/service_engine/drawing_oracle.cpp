// The part of the engine's oracle for strokes.
#include <algorithm>
#include <string>
#include <string_view>

#include "tests/model/stroke_oracle.h"
#include "tests/service_engine/engine_oracle.h"
#include "tests/service_engine/oracle_judgements.h"

namespace kvn::service {
namespace {

using enum model::ButtonSlot;

char LetterOf(model::StrokeDirection direction) {
    return " URDL"[static_cast<std::size_t>(direction)];
}

std::string LettersOf(const EngineGesture& gesture) {
    std::string letters;
    for (const model::StrokeDirection direction : gesture.stroke) {
        if (direction != model::StrokeDirection::None) letters += LetterOf(direction);
    }
    return letters;
}

}  // namespace

// The press that began the stroke under way.
EngineOracle::Place EngineOracle::StrokeUnderWay() const {
    for (Place k = Now() - 1; k >= 0; --k) {
        if (HasOrder(k, OrderKind::StrokeBegin)) return k;
        if (HasOrder(k, OrderKind::StrokeEnd)) return -1;
    }
    return -1;
}

bool EngineOracle::IsPressThatGivesUp(Place stroke) const {
    const Place now = Now();
    const bool isRight = IsMouse(now, MouseEventKind::Press) && At(now).input.mouse.control == Right;
    if (!isRight || PhysicalAt(now) == PhysicalAt(stroke)) return false;
    if (SwitchAt(InputKind::Overload, now) || IsAskedAt(PhysicalAt(now), now)) return false;
    return KindAt(Right, now) != 'g';
}

bool EngineOracle::GivesUp(Place stroke) const {
    const Place now = Now();
    if (EndsEverything(now) || At(now).input.kind == InputKind::EditBegin) return true;
    if (IsMissedRelease(now, PhysicalAt(stroke))) return true;
    if (IsButton(now, MouseEventKind::Press, PhysicalAt(stroke)) || IsPressThatGivesUp(stroke)) return true;
    if (At(now).input.kind != InputKind::Settings) return false;
    const bool isOtherProfile = SettingsAt(stroke).profile != SettingsAt(now).profile;
    return isOtherProfile || KindAt(At(stroke).input.mouse.control, now) != 'g';
}

void EngineOracle::AnswerStroke() {
    const Place stroke = StrokeUnderWay();
    if (stroke < 0) return;
    const bool isGivenUp = GivesUp(stroke);
    const bool isDrawn = IsButton(Now(), MouseEventKind::Release, PhysicalAt(stroke));
    Order order;
    if (At(Now()).input.kind == InputKind::Tick) {
        order.kind = OrderKind::StrokeMove;
        order.place = At(Now()).input.cursor;
        Add(order);
    }
    if (!isGivenUp && !isDrawn) return;
    order.kind = OrderKind::StrokeEnd;
    Add(order);
    if (isGivenUp) return Note(stroke, Cause::GivenUp);
    AnswerStrokeDrawn(stroke);
}

// The letters drawn since the press.
std::string EngineOracle::StrokeDrawn(Place stroke) const {
    model::StrokeOracle recogniser;
    const model::ScreenPoint begin = At(stroke).input.mouse.place;
    recogniser.Take(begin.x, begin.y, true, false);
    for (Place k = stroke + 1; k < Now(); ++k) {
        const model::ScreenPoint cursor = At(k).input.cursor;
        if (At(k).input.kind == InputKind::Tick) recogniser.Take(cursor.x, cursor.y, true, false);
    }
    return recogniser.Take(0, 0, false, false).substr(std::string_view("Completed ").size());
}

void EngineOracle::AnswerStrokeDrawn(Place stroke) {
    const std::string drawn = StrokeDrawn(stroke);
    const EngineSettings& settings = SettingsAt(Now());
    Order order = OrderOf(stroke, OrderKind::Note);
    order.cause = Cause::UnknownStroke;
    order.function = 0;
    order.keys = {};
    for (std::size_t letter = 0; letter < drawn.size(); ++letter) {
        order.stroke[letter] = static_cast<model::StrokeDirection>(std::string_view(" URDL").find(drawn[letter]));
    }
    if (drawn.empty()) {
        order.kind = OrderKind::Act;
        order.cause = Cause::NoStroke;
        order.function = NaturalCodeOf(order.control);
        return Add(order);
    }
    const auto count = std::min<std::uint32_t>(settings.gestureCount, 100);
    for (std::uint32_t index = 0; index < count; ++index) {
        const EngineGesture& gesture = settings.gestures[index];
        if (LettersOf(gesture) != drawn) continue;
        const char kind = KindOfCode(gesture.function);
        const bool isUseless = kind == 'n' || (gesture.function == 37 && !HasUsableKey(gesture.keys));
        order.cause = Cause::Gesture;
        order.kind = isUseless || kind == 'g' || kind == '-' ? OrderKind::Note : OrderKind::Act;
        order.function = isUseless ? 0 : gesture.function;
        if (order.function == 37) order.keys = gesture.keys;
        break;
    }
    Add(order);
}

}  // namespace kvn::service

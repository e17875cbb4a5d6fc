#include "tests/service_engine/input_maker.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kvn::service {
namespace {

template <typename T, std::size_t Count>
T Pick(const InputMaker::Chooser& choose, const std::array<T, Count>& items) {
    return items[choose(Count)];
}

// Times close to where the clock wraps around, and to where comparisons change.
constexpr std::array<std::int64_t, 4> kBeginnings{0, 5000, 0xFFFF'FC00, 0x7FFF'FC00};
constexpr std::array<std::int64_t, 16> kGaps{0, 1, 5, 10, 20, 30, 59, 60, 61, 100, 100, 299, 300, 400, 401, 501};
constexpr std::array<std::int64_t, 4> kLongGaps{499, 500, 3025, 0x3000'0000};
constexpr std::array<std::int64_t, 8> kTurnGaps{1, 5, 10, 30, 31, 59, 60, 299};
constexpr std::array<std::int32_t, 10> kDeltas{120, 120, 120, 30, 40, 1, 119, 240, 720, 0};
constexpr std::array<std::int32_t, 9> kSteps{0, 10, 49, 50, 51, 60, 60, 100, 1000};
constexpr std::array<model::FunctionCode, 20> kFunctions{0,  1,  1,  2,  3,  4,  9,  10, 16, 19,
                                                         30, 33, 34, 36, 36, 36, 37, 37, 38, 46};
constexpr std::array<model::KeyCode, 6> kKeyCodes{model::kNoKey, model::kPromptKey, 7, 'A', 162, 1000};

constexpr std::uint32_t kButtonCountOfMouse = 5;
constexpr std::uint32_t kMostGestures = 12;

}  // namespace

InputMaker::InputMaker(Chooser numbers) : choose(std::move(numbers)), now(Pick(choose, kBeginnings)) {
    ChangeGestures();
    for (model::FunctionCode& function : settings.functions.items) function = AnyFunction();
}

EngineInput InputMaker::Next() {
    PassTime();
    if (!std::exchange(hasBegun, true)) return Settings();
    return turnsLeft > 0 && !OneIn(7) ? NextOfBurst() : Fresh();
}

void InputMaker::PassTime() {
    if (turnsLeft > 0 && !OneIn(16)) {
        now += turnGap;
    } else {
        now += OneIn(24) ? Pick(choose, kLongGaps) : Pick(choose, kGaps);
    }
}

EngineInput InputMaker::NextOfBurst() {
    --turnsLeft;
    lastTurn.time = now;
    if (lastTurn.kind != InputKind::Tick) return lastTurn;
    if (turnsLeft == 0) return ReleaseOf(drawing);
    cursor.x += stride.x;
    cursor.y += stride.y;
    if (OneIn(3)) Turn();
    lastTurn.cursor = cursor;
    return lastTurn;
}

EngineInput InputMaker::Fresh() {
    const std::uint32_t what = choose(100);
    if (what < 26) return Press();
    if (what < 46) return Release();
    if (what < 54) return Tilt();
    if (what < 66) return Wheel();
    if (what < 68) return Tick();
    if (what < 70) return Move();
    if (what < 86) return Settings();
    if (what < 88) return Switch(InputKind::Pause);
    if (what < 90) return Switch(InputKind::Overload);
    if (what < 92) return Switch(InputKind::Swapped);
    if (what < 93) return Question();
    if (what < 94) return ReleaseMissed();
    if (what < 95) return Bare(InputKind::SessionLeft);
    if (what < 96) return Bare(InputKind::EditBegin);
    if (what < 98) return Bare(InputKind::EditEnd);
    return Bare(what < 99 ? InputKind::EditForgotten : InputKind::WindowInFront);
}

EngineInput InputMaker::MouseInput(MouseEventKind kind) {
    EngineInput input = Bare(InputKind::Mouse);
    input.mouse.kind = kind;
    input.mouse.place = cursor;
    input.mouse.isInjected = OneIn(20);
    return input;
}

model::ButtonSlot InputMaker::AnyButton() {
    return static_cast<model::ButtonSlot>(choose(kButtonCountOfMouse));
}

// Often the control that was used last, so that settings change while it is held.
model::ButtonSlot InputMaker::AnyControl() {
    return OneIn(2) ? lastUsed : static_cast<model::ButtonSlot>(choose(model::kButtonSlotCount));
}

EngineInput InputMaker::Press() {
    EngineInput input = MouseInput(MouseEventKind::Press);
    input.mouse.control = lastUsed = AnyButton();
    down |= 1U << static_cast<std::uint32_t>(input.mouse.control);
    if (OneIn(2)) Draw(input.mouse.control);
    return input;
}

void InputMaker::Draw(model::ButtonSlot button) {
    drawing = button;
    lastTurn = Bare(InputKind::Tick);
    turnsLeft = 2 + static_cast<int>(choose(5));
    turnGap = 100;
    Turn();
}

// Strokes are drawn along the axes.
void InputMaker::Turn() {
    const std::int32_t step = Pick(choose, kSteps) * (OneIn(2) ? -1 : 1);
    stride = OneIn(2) ? model::ScreenPoint{step, 0} : model::ScreenPoint{0, step};
}

EngineInput InputMaker::ReleaseOf(model::ButtonSlot button) {
    EngineInput input = MouseInput(MouseEventKind::Release);
    input.mouse.control = button;
    down &= ~(1U << static_cast<std::uint32_t>(button));
    return input;
}

// Mostly releases of controls that are down.
EngineInput InputMaker::Release() {
    std::uint32_t button = choose(kButtonCountOfMouse);
    for (int tries = 0; tries < 4 && (down & (1U << button)) == 0; ++tries) button = (button + 1) % kButtonCountOfMouse;
    return ReleaseOf(static_cast<model::ButtonSlot>(button));
}

EngineInput InputMaker::Tilt() {
    EngineInput input = MouseInput(MouseEventKind::Tilt);
    input.mouse.delta = Pick(choose, kDeltas) * (OneIn(2) ? -1 : 1);
    if (OneIn(100)) input.mouse.delta *= 100'000;
    lastTurn = input;
    lastUsed = input.mouse.delta < 0 ? model::ButtonSlot::TiltLeft : model::ButtonSlot::TiltRight;
    turnsLeft = static_cast<int>(choose(7));
    turnGap = Pick(choose, kTurnGaps);
    return input;
}

EngineInput InputMaker::Wheel() {
    EngineInput input = MouseInput(MouseEventKind::Wheel);
    input.mouse.delta = Pick(choose, kDeltas) * (OneIn(4) ? -1 : 1);
    if (OneIn(100)) input.mouse.delta *= 100'000;
    lastTurn = input;
    turnsLeft = static_cast<int>(choose(12));
    turnGap = Pick(choose, kTurnGaps);
    return input;
}

EngineInput InputMaker::Move() {
    return MouseInput(MouseEventKind::Move);
}

EngineInput InputMaker::Tick() {
    const std::int32_t step = Pick(choose, kSteps) * (OneIn(2) ? -1 : 1);
    (OneIn(2) ? cursor.x : cursor.y) += step;
    EngineInput input = Bare(InputKind::Tick);
    input.cursor = cursor;
    return input;
}

EngineInput InputMaker::Bare(InputKind kind) {
    EngineInput input;
    input.kind = kind;
    input.time = now;
    return input;
}

// Mostly off: while it is paused or overloaded little happens.
EngineInput InputMaker::Switch(InputKind kind) {
    EngineInput input = Bare(kind);
    input.isOn = OneIn(5);
    return input;
}

// It may arrive before slightly older events, but questions stay in order.
EngineInput InputMaker::Question() {
    EngineInput input = Bare(InputKind::Question);
    lastQuestion = std::max(lastQuestion, now + choose(30));
    input.time = lastQuestion;
    input.asked = static_cast<model::ButtonSlot>(choose(model::kButtonSlotCount));
    return input;
}

EngineInput InputMaker::ReleaseMissed() {
    EngineInput input = Bare(InputKind::ReleaseMissed);
    input.asked = AnyControl();
    return input;
}

EngineInput InputMaker::Settings() {
    ChangeSettings();
    EngineInput input = Bare(InputKind::Settings);
    input.settings = std::make_shared<const EngineSettings>(settings);
    return input;
}

model::FunctionCode InputMaker::AnyFunction() {
    return OneIn(8) ? static_cast<model::FunctionCode>(choose(60)) - 2 : Pick(choose, kFunctions);
}

model::EtcKey InputMaker::AnyKeys() {
    model::EtcKey keys;
    for (model::KeyCode& code : keys.codes) code = Pick(choose, kKeyCodes);
    return keys;
}

// Mostly changes one or two things, so that much stays the same.
void InputMaker::ChangeSettings() {
    const std::uint32_t what = choose(8);
    if (what == 0) settings.profile = choose(3);
    if (what == 1) settings.controlCount = static_cast<std::int32_t>(choose(10)) - 1;
    if (what == 2) settings.horizontalSpeed = static_cast<std::int32_t>(choose(11)) - 1;
    if (what == 3) ChangeGestures();
    if (what == 4) {
        settings.flying.flicks =
            OneIn(3) ? static_cast<std::int32_t>(choose(9)) - 2 : 1 + static_cast<std::int32_t>(choose(2));
        settings.flying.revolutionSpeed = static_cast<std::int32_t>(choose(12));
        settings.flying.scrollSpeed = static_cast<std::int32_t>(choose(12));
    }
    if (what < 5) return;
    const std::uint32_t changes = what == 5 ? 5 : 1;
    for (std::uint32_t change = 0; change < changes; ++change) {
        const model::ButtonSlot control = AnyControl();
        settings.functions[control] = AnyFunction();
        settings.keys[control] = AnyKeys();
    }
}

void InputMaker::ChangeGestures() {
    settings.gestureCount = OneIn(50) ? 0xFFFF'FFFF : choose(kMostGestures + 1);
    for (std::uint32_t index = 0; index < settings.gestureCount && index < kMostGestures; ++index) {
        EngineGesture& gesture = settings.gestures[index];
        gesture = {};
        const std::uint32_t letters = !OneIn(4) ? 1 : choose(model::kMaxStrokeLength + 1);
        for (std::uint32_t letter = 0; letter < letters; ++letter) {
            gesture.stroke[letter] = static_cast<model::StrokeDirection>(1 + choose(4));
        }
        gesture.function = AnyFunction();
        gesture.keys = AnyKeys();
    }
}

}  // namespace kvn::service

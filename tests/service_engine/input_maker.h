// Makes histories of inputs from numbers, either random or a fuzzer's: users press, tilt, flick and draw, while
// everything around them changes.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "tests/service_engine/engine_input.h"

namespace kvn::service {

class InputMaker {
public:
    // Returns a number below its argument.
    using Chooser = std::function<std::uint32_t(std::uint32_t below)>;

    explicit InputMaker(Chooser numbers);

    EngineInput Next();

private:
    EngineInput NextOfBurst();
    EngineInput Fresh();
    EngineInput MouseInput(MouseEventKind kind);
    EngineInput Press();
    EngineInput Release();
    EngineInput ReleaseOf(model::ButtonSlot button);
    void Draw(model::ButtonSlot button);
    void Turn();
    EngineInput Tilt();
    EngineInput Wheel();
    EngineInput Move();
    EngineInput Tick();
    EngineInput Settings();
    EngineInput Question();
    EngineInput ReleaseMissed();
    EngineInput Switch(InputKind kind);
    EngineInput Bare(InputKind kind);
    void ChangeSettings();
    void ChangeGestures();
    void PassTime();

    model::FunctionCode AnyFunction();
    model::EtcKey AnyKeys();
    model::ButtonSlot AnyButton();
    model::ButtonSlot AnyControl();
    bool OneIn(std::uint32_t count) { return choose(count) == 0; }

    Chooser choose;
    bool hasBegun = false;
    std::int64_t now;
    std::int64_t lastQuestion = 0;
    std::uint32_t down = 0;  // as the user sees them
    model::ButtonSlot lastUsed = model::ButtonSlot::Left;
    EngineInput lastTurn;  // of the wheel or of a tilt, or the tick of a stroke
    model::ButtonSlot drawing = model::ButtonSlot::Left;
    model::ScreenPoint stride;  // the current direction of the stroke
    int turnsLeft = 0;
    std::int64_t turnGap = 0;
    model::ScreenPoint cursor;
    EngineSettings settings;
};

}  // namespace kvn::service

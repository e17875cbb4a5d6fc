// One input of an engine, of any kind. A history is a list of them.
#pragma once

#include <cstdint>
#include <memory>

#include "service/engine/engine.h"

namespace kvn::service {

enum class InputKind : std::uint8_t {
    Mouse,
    Settings,
    Pause,
    SessionLeft,
    ReleaseMissed,
    Overload,
    Swapped,
    EditBegin,
    EditEnd,
    EditForgotten,
    Question,
    Tick,
    WindowInFront
};

struct EngineInput {
    InputKind kind = InputKind::Mouse;
    std::int64_t time = 0;                              // of Mouse and Question, in milliseconds; does not wrap around
    MouseEvent mouse;                                   // of Mouse
    std::shared_ptr<const EngineSettings> settings;     // of Settings
    bool isOn = false;                                  // of Pause, Overload and Swapped
    model::ButtonSlot asked = model::ButtonSlot::Left;  // of Question and ReleaseMissed
    model::ScreenPoint cursor;                          // of Tick
};

// Pass for everything except mouse events.
Verdict Tell(Engine& engine, const EngineInput& input, Orders& orders);

}  // namespace kvn::service

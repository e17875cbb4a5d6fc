// The action of a control or a gesture under the settings in force.
#pragma once

#include "service/engine/engine_settings.h"
#include "service/engine/functions.h"

namespace kvn::service {

struct AssignedFunction {
    FunctionKind kind = FunctionKind::Natural;
    model::FunctionCode code = model::kFunctionNone;  // kFunctionNone if the setting is useless
    model::EtcKey keys;                               // of function 37

    // The horizontal speed decides whether a tilt's function is natural; a different speed does not change the
    // function.
    bool IsSameAs(const AssignedFunction& other) const { return code == other.code && keys == other.keys; }
};

AssignedFunction FunctionOf(const EngineSettings& settings, model::ButtonSlot control);

// Natural if the gesture does nothing.
AssignedFunction FunctionOf(const EngineGesture& gesture);

// 1 to 8; a speed out of range counts as 4.
std::int32_t HorizontalSpeedOf(const EngineSettings& settings);

constexpr bool IsTilt(model::ButtonSlot control) {
    return control == model::ButtonSlot::TiltLeft || control == model::ButtonSlot::TiltRight;
}

}  // namespace kvn::service

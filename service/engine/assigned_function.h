// What a control or a gesture does under the settings in force.
#pragma once

#include "service/engine/engine_settings.h"
#include "service/engine/functions.h"

namespace kvn::service {

struct AssignedFunction {
    FunctionKind kind = FunctionKind::Natural;
    model::FunctionCode code = model::kFunctionNone;  // kFunctionNone where the setting says nothing of use
    model::EtcKey keys;                               // of function 37

    // The horizontal speed, which decides whether a tilt's own function is natural, makes no other function of it.
    bool IsSameAs(const AssignedFunction& other) const { return code == other.code && keys == other.keys; }
};

AssignedFunction FunctionOf(const EngineSettings& settings, model::ButtonSlot control);

// Natural where a gesture has nothing to do.
AssignedFunction FunctionOf(const EngineGesture& gesture);

// 1 to 8; a speed out of range counts as 4.
std::int32_t HorizontalSpeedOf(const EngineSettings& settings);

constexpr bool IsTilt(model::ButtonSlot control) {
    return control == model::ButtonSlot::TiltLeft || control == model::ButtonSlot::TiltRight;
}

}  // namespace kvn::service

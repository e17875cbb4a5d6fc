#include "service/engine/assigned_function.h"

#include <algorithm>
#include <span>

namespace kvn::service {
namespace {

using model::ButtonSlot;
using model::FunctionCode;

constexpr std::int32_t kSlowest = 1, kNaturalSpeed = 4, kFastest = 8;

bool HoldsLeftClick(const EngineSettings& settings) {
    const auto count = std::clamp<std::int32_t>(settings.controlCount, 0, model::kButtonSlotCount);
    const auto onMouse = std::span(settings.functions.items).first(static_cast<std::size_t>(count));
    return std::ranges::find(onMouse, model::kFunctionLeftClick) != onMouse.end();
}

bool NamesKey(const model::EtcKey& keys) {
    return std::ranges::any_of(
        keys.codes, [](model::KeyCode code) { return code != model::kPromptKey && model::KeyNameOf(code) != nullptr; });
}

// Such a setting is natural for every control.
bool SaysNothing(FunctionCode code, const model::EtcKey& keys) {
    return KindOf(code) == FunctionKind::Natural || (code == model::kFunctionArbitraryKey && !NamesKey(keys));
}

AssignedFunction Assigned(FunctionCode code, const model::EtcKey& keys) {
    return {KindOf(code), code, code == model::kFunctionArbitraryKey ? keys : model::EtcKey{}};
}

bool IsNaturalHere(const EngineSettings& settings, ButtonSlot control) {
    const FunctionCode code = settings.functions[control];
    if (control == ButtonSlot::Left && !HoldsLeftClick(settings)) return true;
    if (IsTilt(control) && KindOf(code) == FunctionKind::Gesture) return true;
    return SaysNothing(code, settings.keys[control]);
}

}  // namespace

AssignedFunction FunctionOf(const EngineSettings& settings, ButtonSlot control) {
    if (IsNaturalHere(settings, control)) return {};
    AssignedFunction function = Assigned(settings.functions[control], settings.keys[control]);
    const bool isOwn = function.code == NaturalFunctionOf(control);
    const bool isAsWindowsDoes = !IsTilt(control) || HorizontalSpeedOf(settings) == kNaturalSpeed;
    if (isOwn && isAsWindowsDoes) function.kind = FunctionKind::Natural;
    return function;
}

AssignedFunction FunctionOf(const EngineGesture& gesture) {
    if (SaysNothing(gesture.function, gesture.keys)) return {};
    return Assigned(gesture.function, gesture.keys);
}

std::int32_t HorizontalSpeedOf(const EngineSettings& settings) {
    const std::int32_t speed = settings.horizontalSpeed;
    return speed < kSlowest || speed > kFastest ? kNaturalSpeed : speed;
}

}  // namespace kvn::service

#include "gestures/gesture_button.h"

#include <algorithm>
#include <array>

namespace kvn::gestures {
namespace {

using model::ButtonSlot;
using platform::ServiceButton;

// The numbers of the debug texts: docs/kept-behaviour.md.
constexpr std::array<GestureButtonRow, 5> kGestureButtons{{
    {ButtonSlot::Left, ServiceButton::Left, L"j=1\n"},
    {ButtonSlot::Right, ServiceButton::Right, L"j=2\n"},
    {ButtonSlot::Center, ServiceButton::Center, L"j=4\n"},
    {ButtonSlot::Button4, ServiceButton::Button4, L"j=5\n"},
    {ButtonSlot::Button5, ServiceButton::Button5, L"j=6\n"},
}};

bool IsGestureSlot(const model::SettingValues& values, ButtonSlot slot) {
    return values[RowOf(slot).field] == model::kFunctionGesture;
}

}  // namespace

bool HasGestureFunction(const model::SettingValues& values) {
    return std::ranges::any_of(
        model::kButtonSlots, [&](ButtonSlot slot) { return IsGestureSlot(values, slot); }, &model::ButtonSlotRow::slot);
}

const GestureButtonRow* FindGestureButton(const model::SettingValues& values) {
    const auto row = std::ranges::find_if(
        kGestureButtons, [&](ButtonSlot slot) { return IsGestureSlot(values, slot); }, &GestureButtonRow::slot);
    return row == kGestureButtons.end() ? nullptr : &*row;
}

}  // namespace kvn::gestures

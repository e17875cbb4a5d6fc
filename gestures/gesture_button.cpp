#include "gestures/gesture_button.h"

#include <algorithm>
#include <array>

namespace kvn::gestures {
namespace {

using model::ButtonSlot;
using platform::ServiceButton;

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
    return std::any_of(model::kButtonSlots.begin(), model::kButtonSlots.end(),
                       [&](const model::ButtonSlotRow& row) { return IsGestureSlot(values, row.slot); });
}

const GestureButtonRow* FindGestureButton(const model::SettingValues& values) {
    const auto row = std::find_if(kGestureButtons.begin(), kGestureButtons.end(),
                                  [&](const GestureButtonRow& each) { return IsGestureSlot(values, each.slot); });
    return row == kGestureButtons.end() ? nullptr : &*row;
}

}  // namespace kvn::gestures

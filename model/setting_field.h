// The eleven numbers of a profile and the seven mouse controls among them: the one table from which the profile file,
// the registry, the checks and the messages take their names and ranges.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/enum_array.h"
#include "model/function_catalogue.h"
#include "model/registry_values.h"
#include "resources/resource.h"

namespace kvn::model {

// In the order in which the profile file stores them and the service sends them.
enum class SettingField : std::size_t {
    Left,
    Right,
    Center,
    Button4,
    Button5,
    HorizontalScrollSpeed,
    TiltLeft,
    TiltRight,
    FlyingScrollSpeed,
    FlyingRevolutionSpeed,
    FlyingRevolutionCount,
};

inline constexpr std::size_t kSettingFieldCount = 11;

// The eleven numbers themselves.
using SettingValues = EnumArray<SettingField, std::int32_t, kSettingFieldCount>;

struct SettingFieldRow {
    SettingField field;
    const char* fileElement;
    RegistryValue registryValue;
    std::int32_t minimum;
    std::int32_t maximum;
    bool mayBeUnset;  // kUnsetValue is a good value too
    std::int32_t defaultValue;
    unsigned labelId;  // string id of the name in messages
};

// In the order of SettingField. The flying-scroll fields take the range of a function code, not of their sliders:
// docs/kept-behaviour.md.
inline constexpr std::array<SettingFieldRow, kSettingFieldCount> kSettingFields{{
    {SettingField::Left, "lbutton", RegistryValue::Left, 0, kMaxFunctionCode, false, kFunctionLeftClick, IDS_SLOT_LEFT},
    {SettingField::Right, "rbutton", RegistryValue::Right, 0, kMaxFunctionCode, false, kFunctionRightClick,
     IDS_SLOT_RIGHT},
    {SettingField::Center, "tbutton", RegistryValue::Center, 0, kMaxFunctionCode, false, kFunctionAutoScroll,
     IDS_SLOT_CENTER},
    {SettingField::Button4, "button4", RegistryValue::Button4, 0, kMaxFunctionCode, false, kFunctionBack,
     IDS_SLOT_BUTTON4},
    {SettingField::Button5, "button5", RegistryValue::Button5, 0, kMaxFunctionCode, false, kFunctionForward,
     IDS_SLOT_BUTTON5},
    {SettingField::HorizontalScrollSpeed, "scrolls", RegistryValue::HorizontalScrollSpeed, 1, 8, false, 4,
     IDS_HORIZONTAL_SPEED},
    {SettingField::TiltLeft, "tiltleft", RegistryValue::TiltLeft, 0, kMaxFunctionCode, false, kFunctionLeftScroll,
     IDS_SLOT_TILT_LEFT},
    {SettingField::TiltRight, "tiltright", RegistryValue::TiltRight, 0, kMaxFunctionCode, false, kFunctionRightScroll,
     IDS_SLOT_TILT_RIGHT},
    {SettingField::FlyingScrollSpeed, "hspeed", RegistryValue::FlyingScrollSpeed, 0, kMaxFunctionCode, false, 5,
     IDS_FLYING_SPEED},
    {SettingField::FlyingRevolutionSpeed, "hlotate", RegistryValue::FlyingRevolutionSpeed, 0, kMaxFunctionCode, false,
     5, IDS_REVOLUTION_SPEED},
    {SettingField::FlyingRevolutionCount, "hcount", RegistryValue::FlyingRevolutionCount, 0, kMaxFunctionCode, true, 2,
     IDS_REVOLUTION_COUNT},
}};

static_assert(IsInEnumOrder(kSettingFields, [](const SettingFieldRow& row) { return row.field; }));

constexpr const SettingFieldRow& RowOf(SettingField field) {
    return kSettingFields[static_cast<std::size_t>(field)];
}

// The assignable controls of the mouse, in their fixed order.
enum class ButtonSlot : std::size_t { Left, Right, Center, Button4, Button5, TiltLeft, TiltRight };

inline constexpr std::size_t kButtonSlotCount = 7;

struct ButtonSlotRow {
    ButtonSlot slot;
    SettingField field;         // where the slot's function code is
    const char* etcKeyElement;  // the arbitrary key in the profile file and in the registry
    RegistryValue etcKeyValue;
};

// In the order of ButtonSlot.
inline constexpr std::array<ButtonSlotRow, kButtonSlotCount> kButtonSlots{{
    {ButtonSlot::Left, SettingField::Left, "lbutton_etcKey", RegistryValue::LeftEtcKey},
    {ButtonSlot::Right, SettingField::Right, "rbutton_etcKey", RegistryValue::RightEtcKey},
    {ButtonSlot::Center, SettingField::Center, "tbutton_etcKey", RegistryValue::CenterEtcKey},
    {ButtonSlot::Button4, SettingField::Button4, "button4_etcKey", RegistryValue::Button4EtcKey},
    {ButtonSlot::Button5, SettingField::Button5, "button5_etcKey", RegistryValue::Button5EtcKey},
    {ButtonSlot::TiltLeft, SettingField::TiltLeft, "tiltleft_etcKey", RegistryValue::TiltLeftEtcKey},
    {ButtonSlot::TiltRight, SettingField::TiltRight, "tiltright_etcKey", RegistryValue::TiltRightEtcKey},
}};

static_assert(IsInEnumOrder(kButtonSlots, [](const ButtonSlotRow& row) { return row.slot; }));

constexpr const ButtonSlotRow& RowOf(ButtonSlot slot) {
    return kButtonSlots[static_cast<std::size_t>(slot)];
}

// The function of a slot in a new profile.
constexpr FunctionCode DefaultFunctionOf(ButtonSlot slot) {
    return RowOf(RowOf(slot).field).defaultValue;
}

// The value itself if it is in the field's range, else kAbnormalValue.
constexpr std::int32_t CheckedSetting(SettingField field, std::int32_t value) {
    const SettingFieldRow& row = RowOf(field);
    const bool good = (value >= row.minimum && value <= row.maximum) || (row.mayBeUnset && value == kUnsetValue);
    return good ? value : kAbnormalValue;
}

// Every value checked.
constexpr SettingValues CheckedSettings(const SettingValues& values) {
    SettingValues checked;
    for (const SettingFieldRow& row : kSettingFields) checked[row.field] = CheckedSetting(row.field, values[row.field]);
    return checked;
}

}  // namespace kvn::model

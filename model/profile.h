// Profiles: one complete set of button assignments, scroll settings, gestures and programs for one mouse model.
// Everything here is a value: a copy has its own lists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/enum_array.h"
#include "model/etc_key.h"
#include "model/setting_field.h"

namespace kvn::model {

// A program that selects its profile.
struct ApplicationEntry {
    std::wstring name;
    std::wstring path;

    friend bool operator==(const ApplicationEntry&, const ApplicationEntry&) = default;
};

struct GestureEntry {
    std::wstring stroke;  // direction letters, at most four
    FunctionCode function = kFunctionNone;
    std::wstring memo;
    EtcKey etcKey;  // used when the function is kFunctionArbitraryKey, kept in any case

    friend bool operator==(const GestureEntry&, const GestureEntry&) = default;
};

// The part that the page's panes edit and the registry mirrors.
struct ProfileSettings {
    SettingValues values;
    EnumArray<ButtonSlot, EtcKey, kButtonSlotCount> etcKeys;
    std::vector<ApplicationEntry> applications;
    std::vector<GestureEntry> gestures;

    std::int32_t& operator[](SettingField field) { return values[field]; }
    std::int32_t operator[](SettingField field) const { return values[field]; }
    FunctionCode FunctionOf(ButtonSlot slot) const { return values[RowOf(slot).field]; }

    friend bool operator==(const ProfileSettings&, const ProfileSettings&) = default;
};

struct ProfileRecord {
    ProfileSettings settings;
    std::wstring name;
    // Every record carries these; only the first record's values count.
    std::uint16_t pid = 0;
    std::uint16_t vid = 0;
    std::int32_t selectedIndex = 0;

    friend bool operator==(const ProfileRecord&, const ProfileRecord&) = default;
};

// The profiles of one model in their order; the first is the default profile.
using ProfileSet = std::vector<ProfileRecord>;

// A new record: every field's default, with this function for the wheel button.
ProfileRecord DefaultProfileRecord(FunctionCode centerFunction = RowOf(SettingField::Center).defaultValue);

// A copy of the settings with every number checked against its range (kAbnormalValue where it fails).
ProfileSettings CheckedCopy(const ProfileSettings& settings);

// The settings behind "Return to initial values" until the service sends its own: the numbers of this record, or the
// field's default where the record's is out of range.
SettingValues InitialValuesOf(const ProfileRecord& record);

// The initial settings in the record that the service sends: its numbers as signed 32-bit values in the order of
// SettingField, or the field's default where one is out of range, since a repair must not put another bad number into a
// profile. Nothing if the data is too short; extra data is ignored.
std::optional<SettingValues> InitialValuesFromRecord(std::span<const std::byte> data);

// A number of a profile that was out of its range.
struct AbnormalValue {
    std::size_t profile;
    SettingField field;
};

// Replaces every number out of range with the initial value of its field. Returns those numbers, profile by profile, in
// the order of the message to the user.
std::vector<AbnormalValue> RepairAbnormalValues(ProfileSet& profiles, const SettingValues& initialValues);

}  // namespace kvn::model

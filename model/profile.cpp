#include "model/profile.h"

#include <cstring>

namespace kvn::model {
namespace {

// The numbers; each one out of range is replaced by its field's default.
SettingValues WithDefaults(const SettingValues& numbers) {
    SettingValues values = CheckedSettings(numbers);
    for (const SettingFieldRow& row : kSettingFields) {
        if (values[row.field] == kAbnormalValue) values[row.field] = row.defaultValue;
    }
    return values;
}

}  // namespace

ProfileRecord DefaultProfileRecord(FunctionCode centerFunction) {
    ProfileRecord record;
    for (const SettingFieldRow& row : kSettingFields) record.settings[row.field] = row.defaultValue;
    record.settings[SettingField::Center] = centerFunction;
    return record;
}

ProfileSettings CheckedCopy(const ProfileSettings& settings) {
    ProfileSettings copy = settings;
    copy.values = CheckedSettings(settings.values);
    return copy;
}

SettingValues InitialValuesOf(const ProfileRecord& record) {
    return WithDefaults(record.settings.values);
}

std::optional<SettingValues> InitialValuesFromRecord(std::span<const std::byte> data) {
    SettingValues values;
    if (data.size() < sizeof values.items) return std::nullopt;
    std::memcpy(values.items.data(), data.data(), sizeof values.items);
    return WithDefaults(values);
}

std::vector<AbnormalValue> RepairAbnormalValues(ProfileSet& profiles, const SettingValues& initialValues) {
    std::vector<AbnormalValue> repaired;
    for (std::size_t profile = 0; profile < profiles.size(); ++profile) {
        ProfileSettings& settings = profiles[profile].settings;
        for (const SettingFieldRow& row : kSettingFields) {
            if (CheckedSetting(row.field, settings[row.field]) != kAbnormalValue) continue;
            settings[row.field] = initialValues[row.field];
            repaired.push_back({profile, row.field});
        }
    }
    return repaired;
}

}  // namespace kvn::model

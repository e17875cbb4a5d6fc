#include "model/registry_changes.h"

#include <algorithm>
#include <array>
#include <span>

#include "platform/number_text.h"

namespace kvn::model {
namespace {

constexpr wchar_t kFieldSeparator = L'\t';

// An apply writes the numbers in two runs, with the arbitrary keys between them: docs/kept-behaviour.md.
constexpr std::array kNumbersBeforeKeys{SettingField::Left,     SettingField::Right,
                                        SettingField::Center,   SettingField::Button4,
                                        SettingField::Button5,  SettingField::HorizontalScrollSpeed,
                                        SettingField::TiltLeft, SettingField::TiltRight};
constexpr std::array kNumbersAfterKeys{SettingField::FlyingScrollSpeed, SettingField::FlyingRevolutionSpeed,
                                       SettingField::FlyingRevolutionCount};

// A new default profile writes them in a different order: docs/kept-behaviour.md.
constexpr std::array kNumbersOfNewProfile{SettingField::Left,
                                          SettingField::Right,
                                          SettingField::Center,
                                          SettingField::Button4,
                                          SettingField::Button5,
                                          SettingField::TiltLeft,
                                          SettingField::TiltRight,
                                          SettingField::HorizontalScrollSpeed,
                                          SettingField::FlyingScrollSpeed,
                                          SettingField::FlyingRevolutionSpeed,
                                          SettingField::FlyingRevolutionCount};

// A text as one field of a list's entry, without characters that would end the field or the entry early. The profile
// file keeps the text unchanged.
std::wstring FieldText(const std::wstring& text) {
    std::wstring field = text.substr(0, text.find(L'\0'));
    std::replace(field.begin(), field.end(), kFieldSeparator, L' ');
    return field;
}

// Without settings before them all values differ.
using Earlier = const ProfileSettings*;

void AppendNumbers(std::span<const SettingField> fields, Earlier before, const ProfileSettings& after,
                   std::vector<RegistryWrite>& writes) {
    for (const SettingField field : fields) {
        if (before != nullptr && (*before)[field] == after[field]) continue;
        writes.push_back({RowOf(field).registryValue, after[field], {}});
    }
}

void AppendKeys(Earlier before, const ProfileSettings& after, std::vector<RegistryWrite>& writes) {
    for (const ButtonSlotRow& row : kButtonSlots) {
        std::wstring text = EtcKeyToText(after.etcKeys[row.slot]);
        if (before != nullptr && text == EtcKeyToText(before->etcKeys[row.slot])) continue;
        writes.push_back({row.etcKeyValue, 0, std::move(text)});
    }
}

std::vector<RegistryWrite> Writes(Earlier before, const ProfileSettings& after) {
    std::vector<RegistryWrite> writes;
    AppendNumbers(kNumbersBeforeKeys, before, after, writes);
    AppendKeys(before, after, writes);
    AppendNumbers(kNumbersAfterKeys, before, after, writes);
    if (before == nullptr || before->gestures != after.gestures) {
        writes.push_back({RegistryValue::Gesture, 0, GesturesToMultiString(after.gestures)});
    }
    if (before == nullptr || before->applications != after.applications) {
        writes.push_back({RegistryValue::ProfileApp, 0, ApplicationsToMultiString(after.applications)});
    }
    return writes;
}

}  // namespace

std::vector<RegistryWrite> ChangedValues(const ProfileSettings& before, const ProfileSettings& after) {
    return Writes(&before, after);
}

std::vector<RegistryWrite> AllValues(const ProfileSettings& settings) {
    return Writes(nullptr, settings);
}

std::vector<RegistryWrite> AllNumbers(const SettingValues& values) {
    std::vector<RegistryWrite> writes;
    writes.reserve(kNumbersOfNewProfile.size());
    for (const SettingField field : kNumbersOfNewProfile) {
        writes.push_back({RowOf(field).registryValue, values[field], {}});
    }
    return writes;
}

std::wstring ApplicationsToMultiString(const std::vector<ApplicationEntry>& applications) {
    std::wstring block;
    for (const ApplicationEntry& entry : applications) {
        block += FieldText(entry.name) + kFieldSeparator + FieldText(entry.path) + L'\0';
    }
    return block + L'\0';
}

std::wstring GesturesToMultiString(const std::vector<GestureEntry>& gestures) {
    std::wstring block;
    for (const GestureEntry& entry : gestures) {
        block += FieldText(entry.stroke) + kFieldSeparator + platform::NumberText(entry.function) + kFieldSeparator +
                 FieldText(entry.memo) + kFieldSeparator + EtcKeyToText(entry.etcKey) + L'\0';
    }
    return block + L'\0';
}

}  // namespace kvn::model

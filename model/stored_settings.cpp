#include "model/stored_settings.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace kvn::model {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr wchar_t kFieldSeparator = L'\t';
constexpr unsigned kBitsOfByte = 8;
constexpr std::size_t kBytesOfCharacter = 2;

std::optional<std::int32_t> NumberOf(const Bytes& bytes) {
    if (bytes.size() > sizeof(std::int32_t)) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t index = 0; index < bytes.size(); ++index)
        number |= std::uint32_t{bytes[index]} << kBitsOfByte * index;
    return static_cast<std::int32_t>(number);
}

// Half a character at the end is dropped.
std::wstring CharactersOf(const Bytes& bytes) {
    std::wstring text(bytes.size() / kBytesOfCharacter, L'\0');
    for (std::size_t index = 0; index < text.size(); ++index) {
        const unsigned low = bytes[index * kBytesOfCharacter];
        const unsigned high = bytes[index * kBytesOfCharacter + 1];
        text[index] = static_cast<wchar_t>(low | high << kBitsOfByte);
    }
    return text;
}

// Takes the text up to the next separator, or to the end, off the front.
std::wstring_view TakeUntil(wchar_t separator, std::wstring_view& text) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::wstring_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

template <typename Entry, typename Parse>
std::vector<Entry> EntriesOf(std::wstring_view block, const Parse& parse) {
    std::vector<Entry> entries;
    while (true) {
        std::wstring_view entry = TakeUntil(L'\0', block);
        if (entry.empty()) return entries;
        entries.push_back(parse(entry));
    }
}

std::wstring TakeField(std::wstring_view& entry) {
    return std::wstring(TakeUntil(kFieldSeparator, entry));
}

FunctionCode FunctionOf(std::wstring_view text) {
    std::string digits;
    for (const wchar_t character : text) digits += character < 0x80 ? static_cast<char>(character) : '?';
    FunctionCode code = kAbnormalValue;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code);
    return error == std::errc{} && end == digits.data() + digits.size() ? code : kAbnormalValue;
}

bool IsFlyingScroll(SettingField field) {
    return field >= SettingField::FlyingScrollSpeed;
}

std::optional<std::int32_t> StoredNumber(SettingField field, const Bytes& bytes) {
    const std::optional<std::int32_t> number = NumberOf(bytes);
    if (!number || IsFlyingScroll(field)) return number;
    return CheckedSetting(field, *number) == kAbnormalValue ? std::nullopt : number;
}

EtcKey KeysOf(const Bytes& bytes, std::wstring_view arbitraryKeyText) {
    const std::wstring text = CharactersOf(bytes);
    return TextToEtcKey(std::wstring_view(text).substr(0, text.find(L'\0')), arbitraryKeyText);
}

}  // namespace

StoredSettings StoredSettingsFrom(const StoredBytes& bytes, std::wstring_view arbitraryKeyText) {
    StoredSettings stored;
    for (const SettingFieldRow& row : kSettingFields) {
        const auto& number = bytes[row.registryValue];
        if (number) stored.values[row.field] = StoredNumber(row.field, *number);
    }
    for (const ButtonSlotRow& row : kButtonSlots) {
        const auto& keys = bytes[row.etcKeyValue];
        if (keys) stored.etcKeys[row.slot] = KeysOf(*keys, arbitraryKeyText);
    }
    const auto& applications = bytes[RegistryValue::ProfileApp];
    if (applications) stored.applications = ApplicationsFromMultiString(CharactersOf(*applications));
    const auto& gestures = bytes[RegistryValue::Gesture];
    if (gestures) stored.gestures = GesturesFromMultiString(CharactersOf(*gestures), arbitraryKeyText);
    return stored;
}

ProfileSettings CompletedFrom(const StoredSettings& stored, const ProfileSettings& fallback) {
    ProfileSettings settings;
    for (const SettingFieldRow& row : kSettingFields) {
        settings[row.field] = stored.values[row.field].value_or(fallback[row.field]);
    }
    for (const ButtonSlotRow& row : kButtonSlots) {
        settings.etcKeys[row.slot] = stored.etcKeys[row.slot].value_or(fallback.etcKeys[row.slot]);
    }
    settings.applications = stored.applications ? *stored.applications : fallback.applications;
    settings.gestures = stored.gestures ? *stored.gestures : fallback.gestures;
    return settings;
}

std::vector<ApplicationEntry> ApplicationsFromMultiString(std::wstring_view block) {
    return EntriesOf<ApplicationEntry>(block, [](std::wstring_view entry) {
        ApplicationEntry application;
        application.name = TakeField(entry);
        application.path = TakeField(entry);
        return application;
    });
}

std::vector<GestureEntry> GesturesFromMultiString(std::wstring_view block, std::wstring_view arbitraryKeyText) {
    return EntriesOf<GestureEntry>(block, [&](std::wstring_view entry) {
        GestureEntry gesture;
        gesture.stroke = TakeField(entry);
        gesture.function = FunctionOf(TakeUntil(kFieldSeparator, entry));
        gesture.memo = TakeField(entry);
        gesture.etcKey = TextToEtcKey(TakeUntil(kFieldSeparator, entry), arbitraryKeyText);
        return gesture;
    });
}

}  // namespace kvn::model

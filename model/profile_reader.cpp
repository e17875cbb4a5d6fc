#include "model/profile_reader.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "model/profile_elements.h"
#include "model/xml_guard.h"

namespace kvn::model {
namespace {

// The longest form of kMaxTextLength characters in the file: a reference such as &#xd83d; for each.
constexpr std::size_t kMaxEncodedBytes = 8 * kMaxTextLength;

const TiXmlText* TextNodeOf(const TiXmlElement& element) {
    const TiXmlNode* child = element.FirstChild();
    return child == nullptr ? nullptr : child->ToText();
}

// The element's text, decoded from at most maxBytes bytes of the file.
std::wstring DecodedText(const TiXmlElement& element, const TextCodec& codec, std::size_t maxBytes) {
    const TiXmlText* node = TextNodeOf(element);
    if (node == nullptr) return {};
    const std::wstring text = codec.Decode(std::string_view(node->Value()).substr(0, maxBytes));
    return node->CDATA() ? Unescape(text) : text;
}

class ProfileReader {
public:
    ProfileReader(ProfileRecord freshRecord, const DocumentContext& documentContext)
        : pattern(std::move(freshRecord)), context(documentContext) {}

    ProfileSet Read(const TiXmlElement& root) {
        ProfileSet profiles;
        for (const TiXmlElement* child = root.FirstChildElement(); child; child = child->NextSiblingElement()) {
            const std::string_view name = child->Value();
            if (name == element::kProfile) {
                profiles.push_back(ReadProfile(*child));
            } else if (name == element::kVid) {
                pattern.vid = static_cast<std::uint16_t>(NumberOf(*child).value_or(0));
            } else if (name == element::kPid) {
                pattern.pid = static_cast<std::uint16_t>(NumberOf(*child).value_or(0));
            } else if (name == element::kSelectProfile) {
                pattern.selectedIndex = NumberOf(*child).value_or(0);
            }
        }
        return profiles;
    }

private:
    ProfileRecord ReadProfile(const TiXmlElement& profile) const {
        ProfileRecord record = pattern;
        for (const TiXmlElement* child = profile.FirstChildElement(); child; child = child->NextSiblingElement()) {
            const std::string_view name = child->Value();
            if (name == element::kApplication) {
                if (child->FirstChildElement()) record.settings.applications.push_back(ReadApplication(*child));
            } else if (name == element::kGesture) {
                if (child->FirstChildElement()) record.settings.gestures.push_back(ReadGesture(*child));
            } else if (name == element::kProfileName) {
                record.name = TextOf(*child);
            } else {
                ReadSetting(name, *child, record.settings);
            }
        }
        return record;
    }

    void ReadSetting(std::string_view name, const TiXmlElement& value, ProfileSettings& settings) const {
        for (const SettingFieldRow& row : kSettingFields) {
            if (name != row.fileElement) continue;
            settings[row.field] = CheckedSetting(row.field, NumberOf(value).value_or(kAbnormalValue));
            return;
        }
        for (const ButtonSlotRow& row : kButtonSlots) {
            if (name == row.etcKeyElement) settings.etcKeys[row.slot] = EtcKeyOf(value);
        }
    }

    ApplicationEntry ReadApplication(const TiXmlElement& application) const {
        ApplicationEntry entry;
        for (const TiXmlElement* child = application.FirstChildElement(); child; child = child->NextSiblingElement()) {
            const std::string_view name = child->Value();
            if (name == element::kApplicationName) entry.name = TextOf(*child);
            if (name == element::kApplicationPath) entry.path = TextOf(*child);
        }
        return entry;
    }

    GestureEntry ReadGesture(const TiXmlElement& gesture) const {
        GestureEntry entry;
        for (const TiXmlElement* child = gesture.FirstChildElement(); child; child = child->NextSiblingElement()) {
            const std::string_view name = child->Value();
            if (name == element::kGestureStroke) entry.stroke = TextOf(*child);
            if (name == element::kGestureFunction) entry.function = NumberOf(*child).value_or(kAbnormalValue);
            if (name == element::kGestureMemo) entry.memo = TextOf(*child);
            if (name == element::kGestureEtcKey) entry.etcKey = EtcKeyOf(*child);
        }
        return entry;
    }

    std::wstring TextOf(const TiXmlElement& element) const {
        std::wstring text = DecodedText(element, context.codec, kMaxEncodedBytes);
        if (text.size() > kMaxTextLength) text.resize(kMaxTextLength);
        return text;
    }

    EtcKey EtcKeyOf(const TiXmlElement& element) const {
        return TextToEtcKey(TextOf(element), context.arbitraryKeyText);
    }

    // Every profile starts as a copy of this. It takes over vid, pid and selection as they are read.
    ProfileRecord pattern;
    const DocumentContext& context;
};

}  // namespace

std::optional<std::int32_t> NumberOf(const TiXmlElement& element) {
    const TiXmlText* node = TextNodeOf(element);
    if (node == nullptr) return std::nullopt;
    std::string_view text = node->Value();
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc()) return std::nullopt;
    return number;
}

std::optional<std::wstring> FittingText(const TiXmlElement& element, const TextCodec& codec) {
    std::wstring text = DecodedText(element, codec, kMaxEncodedBytes + 1);
    const TiXmlText* node = TextNodeOf(element);
    if (text.size() > kMaxTextLength ||
        (node != nullptr && std::string_view(node->Value()).size() > kMaxEncodedBytes)) {
        return std::nullopt;
    }
    return text;
}

ParsedDocument::ParsedDocument(std::string bytes) {
    const auto prepared = PrepareXml(std::move(bytes));
    if (!prepared) return;
    // Condensing would trim texts and merge their blanks. Nothing here uses the rows and columns of errors.
    TiXmlBase::SetCondenseWhiteSpace(false);
    document.SetTabSize(0);
    document.Parse(prepared->c_str(), nullptr, TIXML_ENCODING_LEGACY);
    if (!document.Error()) root = document.FirstChildElement();
}

ProfileSet ReadProfiles(const TiXmlElement& root, const ProfileRecord& freshRecord, const DocumentContext& context) {
    return ProfileReader(freshRecord, context).Read(root);
}

ProfileSet ParseProfileDocument(std::string document, const ProfileRecord& freshRecord,
                                const DocumentContext& context) {
    const ParsedDocument parsed(std::move(document));
    if (parsed.Root() == nullptr) return {};
    return ReadProfiles(*parsed.Root(), freshRecord, context);
}

}  // namespace kvn::model

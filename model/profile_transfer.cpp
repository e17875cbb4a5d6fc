#include "model/profile_transfer.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "model/ascii_codec.h"
#include "model/profile_elements.h"
#include "model/profile_list.h"
#include "model/profile_reader.h"
#include "platform/item_limit.h"
#include "platform/number_text.h"

namespace kvn::model {
namespace {

using Problem = std::optional<ImportProblem>;

constexpr std::size_t kItemLimit{platform::kItemLimit};
constexpr std::size_t kMaxShownLength = 40;
constexpr std::int32_t kMaxId = std::numeric_limits<std::uint16_t>::max();

bool IsFunction(std::int32_t code) {
    return code >= kFunctionNone && code <= kMaxFunctionCode;
}

std::wstring Widened(std::string_view ascii) {
    return {ascii.begin(), ascii.end()};
}

std::size_t CountOf(const TiXmlElement& parent, const char* name) {
    std::size_t count = 0;
    for (auto* child = parent.FirstChildElement(name); child; child = child->NextSiblingElement(name)) ++count;
    return count;
}

// Checks one document, element by element, in its order.
class ImportCheck {
public:
    explicit ImportCheck(const TextCodec& textCodec) : codec(textCodec) {}

    Problem Check(const TiXmlElement& root) {
        const std::size_t profiles = CountOf(root, element::kProfile);
        if (!IsOurs(root) || profiles == 0) return About(ImportFault::Foreign, {});
        if (profiles > kItemLimit) return About(ImportFault::TooManyItems, L"profile");
        for (const char* const id : {element::kVid, element::kPid}) {
            if (Problem problem = CheckId(root, id)) return problem;
        }
        const auto last = static_cast<std::int32_t>(profiles) - 1;
        if (Problem problem = CheckNumber(root, element::kSelectProfile, 0, last)) return problem;
        for (auto* child = root.FirstChildElement(element::kProfile); child;
             child = child->NextSiblingElement(element::kProfile)) {
            if (Problem problem = CheckProfile(*child)) return problem;
        }
        return std::nullopt;
    }

private:
    // A document with a second root element or with a document type holds no settings.
    static bool IsOurs(const TiXmlElement& root) {
        if (root.Value() != std::string_view(element::kRoot) || root.NextSiblingElement() != nullptr) return false;
        for (const TiXmlNode* node = root.PreviousSibling(); node; node = node->PreviousSibling()) {
            if (node->ToUnknown() != nullptr) return false;
        }
        return true;
    }

    Problem CheckProfile(const TiXmlElement& child) {
        ++profile;
        profileName.clear();
        if (Problem problem = CheckName(child)) return problem;
        for (const SettingFieldRow& row : kSettingFields) {
            if (Problem problem = CheckSettingOf(child, row)) return problem;
        }
        for (const ButtonSlotRow& row : kButtonSlots) {
            if (Problem problem = CheckText(child, row.etcKeyElement)) return problem;
        }
        if (Problem problem = CheckApplications(child)) return problem;
        return CheckGestures(child);
    }

    Problem CheckName(const TiXmlElement& child) {
        if (Problem problem = CheckText(child, element::kProfileName)) return problem;
        const TiXmlElement* const name = child.FirstChildElement(element::kProfileName);
        if (name != nullptr) profileName = FittingText(*name, codec).value_or(std::wstring());
        if (profileName.empty()) return About(ImportFault::Missing, Widened(element::kProfileName));
        ProfileRecord named;
        named.name = profileName;
        const std::wstring compared(ComparedName(named));
        if (std::ranges::find(names, compared) != names.end()) return About(ImportFault::NameIsTaken, {});
        names.push_back(compared);
        return std::nullopt;
    }

    Problem CheckSettingOf(const TiXmlElement& child, const SettingFieldRow& row) {
        const TiXmlElement* const found = child.FirstChildElement(row.fileElement);
        if (found == nullptr) return std::nullopt;
        if (Problem problem = CheckSingle(*found, row.fileElement)) return problem;
        const std::int32_t number = NumberOf(*found).value_or(kAbnormalValue);
        if (CheckedSetting(row.field, number) != kAbnormalValue) return std::nullopt;
        return AboutNumber(*found, row.fileElement);
    }

    Problem CheckApplications(const TiXmlElement& child) {
        return CheckList(child, element::kApplication, [this](const TiXmlElement& application) {
            return CheckTexts(application, {element::kApplicationName, element::kApplicationPath});
        });
    }

    Problem CheckGestures(const TiXmlElement& child) {
        return CheckList(child, element::kGesture, [this](const TiXmlElement& gesture) {
            Problem problem = CheckNumber(gesture, element::kGestureFunction, kFunctionNone, kMaxFunctionCode);
            if (problem) return problem;
            return CheckTexts(gesture, {element::kGestureStroke, element::kGestureMemo, element::kGestureEtcKey});
        });
    }

    template <typename Check>
    Problem CheckList(const TiXmlElement& parent, const char* name, const Check& check) {
        if (CountOf(parent, name) > kItemLimit) return About(ImportFault::TooManyItems, Widened(name));
        int number = 0;
        for (auto* item = parent.FirstChildElement(name); item; item = item->NextSiblingElement(name)) {
            place = Widened(name) + L'[' + platform::NumberText(++number) + L"]/";
            if (Problem problem = check(*item)) return problem;
            place.clear();
        }
        return std::nullopt;
    }

    Problem CheckTexts(const TiXmlElement& parent, std::initializer_list<const char*> children) {
        for (const char* const name : children) {
            if (Problem problem = CheckText(parent, name)) return problem;
        }
        return std::nullopt;
    }

    Problem CheckText(const TiXmlElement& parent, const char* name) {
        const TiXmlElement* const found = parent.FirstChildElement(name);
        if (found == nullptr) return std::nullopt;
        if (Problem problem = CheckSingle(*found, name)) return problem;
        if (FittingText(*found, codec)) return std::nullopt;
        return About(ImportFault::TextTooLong, Widened(name));
    }

    Problem CheckId(const TiXmlElement& root, const char* name) {
        if (root.FirstChildElement(name) == nullptr) return About(ImportFault::Missing, Widened(name));
        return CheckNumber(root, name, 0, kMaxId);
    }

    Problem CheckNumber(const TiXmlElement& parent, const char* name, std::int32_t minimum, std::int32_t maximum) {
        const TiXmlElement* const found = parent.FirstChildElement(name);
        if (found == nullptr) return std::nullopt;
        if (Problem problem = CheckSingle(*found, name)) return problem;
        const std::optional<std::int32_t> number = NumberOf(*found);
        if (number && *number >= minimum && *number <= maximum) return std::nullopt;
        return AboutNumber(*found, name);
    }

    // Readers disagree on which of two elements counts.
    Problem CheckSingle(const TiXmlElement& found, const char* name) {
        if (found.NextSiblingElement(name) == nullptr) return std::nullopt;
        return About(ImportFault::Twice, Widened(name));
    }

    ImportProblem About(ImportFault fault, std::wstring_view name) const {
        return {fault, place + std::wstring(name), profile, profileName, {}};
    }

    ImportProblem AboutNumber(const TiXmlElement& found, const char* name) const {
        ImportProblem problem = About(ImportFault::NumberBad, Widened(name));
        const TiXmlNode* const text = found.FirstChild();
        const std::string_view bytes = text == nullptr || text->ToText() == nullptr ? "" : text->Value();
        problem.value = codec.Decode(bytes.substr(0, kMaxShownLength));
        return problem;
    }

    const TextCodec& codec;
    std::size_t profile = 0;
    std::wstring profileName;
    std::wstring place;  // which item of a list
    std::vector<std::wstring> names;
};

// Reads the ids and the selection, wherever they are in the document.
ProfileRecord WithHeadOf(const TiXmlElement& root, ProfileRecord record) {
    const auto number = [&](const char* name) {
        const TiXmlElement* const found = root.FirstChildElement(name);
        return found == nullptr ? 0 : NumberOf(*found).value_or(0);
    };
    record.vid = static_cast<std::uint16_t>(number(element::kVid));
    record.pid = static_cast<std::uint16_t>(number(element::kPid));
    record.selectedIndex = number(element::kSelectProfile);
    return record;
}

// Removes the mark that some editors put before a text. In a text that is all ASCII it means nothing.
void DropMark(std::string& document) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    const auto isAscii = [](char byte) { return byte > 0; };
    if (!document.starts_with(kMark)) return;
    if (std::all_of(document.begin() + kMark.size(), document.end(), isAscii)) document.erase(0, kMark.size());
}

}  // namespace

std::variant<ProfileSet, ImportProblem> ParseImport(std::string document, const ProfileRecord& freshRecord,
                                                    const DocumentContext& context) {
    DropMark(document);
    const ParsedDocument parsed(std::move(document));
    if (parsed.Root() == nullptr) return ImportProblem{};
    if (Problem problem = ImportCheck(context.codec).Check(*parsed.Root())) return *problem;
    ProfileSet profiles = ReadProfiles(*parsed.Root(), freshRecord, context);
    const ProfileRecord head = WithHeadOf(*parsed.Root(), {});
    for (ProfileRecord& record : profiles) {
        record.vid = head.vid;
        record.pid = head.pid;
        record.selectedIndex = head.selectedIndex;
    }
    RepairAbnormalValues(profiles, InitialValuesOf(freshRecord));
    return profiles;
}

std::optional<ImportProblem> WhyNotImportable(const ProfileSet& profiles) {
    const AsciiCodec codec;
    TiXmlDocument document;
    BuildProfileDocument(profiles, codec, document);
    return ImportCheck(codec).Check(*document.RootElement());
}

ProfileSet Exportable(ProfileSet profiles, const SettingValues& initialValues) {
    RepairAbnormalValues(profiles, initialValues);
    profiles.front().selectedIndex = static_cast<std::int32_t>(SelectedProfileOf(profiles));
    for (ProfileRecord& record : profiles) {
        for (GestureEntry& gesture : record.settings.gestures) {
            if (!IsFunction(gesture.function)) gesture.function = kFunctionNone;
        }
    }
    return profiles;
}

}  // namespace kvn::model

#include "model/profile_list.h"

#include <algorithm>

namespace kvn::model {
namespace {

constexpr std::size_t kComparedLength = 255;

template <typename Condition>
std::optional<std::size_t> FindProfile(const ProfileSet& profiles, Condition condition) {
    const auto found = std::ranges::find_if(profiles, condition);
    if (found == profiles.end()) return std::nullopt;
    return static_cast<std::size_t>(found - profiles.begin());
}

}  // namespace

std::wstring_view ComparedName(const ProfileRecord& profile) {
    return std::wstring_view(profile.name).substr(0, kComparedLength);
}

bool IsNameInUse(const ProfileSet& profiles, std::wstring_view name) {
    return FindProfile(profiles, [&](const ProfileRecord& profile) { return ComparedName(profile) == name; })
        .has_value();
}

std::size_t ProfileToDelete(const ProfileSet& profiles, std::size_t index) {
    const std::wstring& name = profiles[index].name;
    const auto first = std::ranges::find(profiles, name, &ProfileRecord::name);
    return first == profiles.end() ? index : static_cast<std::size_t>(first - profiles.begin());
}

std::size_t SelectedProfileOf(const ProfileSet& profiles) {
    const std::int32_t stored = profiles.front().selectedIndex;
    const auto index = static_cast<std::size_t>(stored);
    return stored >= 0 && index < profiles.size() ? index : 0;
}

ProfileRecord CopyWithoutPrograms(const ProfileRecord& source, const std::wstring& name) {
    ProfileRecord copy = source;
    copy.name = name;
    copy.settings.applications.clear();
    return copy;
}

std::optional<std::size_t> ProfileWithProgram(const ProfileSet& profiles, const std::wstring& path,
                                              PathComparison isSamePath) {
    return FindProfile(profiles, [&](const ProfileRecord& profile) {
        const auto& programs = profile.settings.applications;
        return std::ranges::any_of(
            programs, [&](const std::wstring& each) { return isSamePath(each, path); }, &ApplicationEntry::path);
    });
}

}  // namespace kvn::model

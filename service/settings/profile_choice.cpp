#include "service/settings/profile_choice.h"

#include <algorithm>

namespace kvn::service {
namespace {

std::size_t IndexOf(const model::ProfileSet& profiles, model::ProfileSet::const_iterator profile) {
    return static_cast<std::size_t>(profile - profiles.begin());
}

}  // namespace

ProfileChoice ChooseProfile(const model::ProfileSet& profiles, std::size_t selected, const std::wstring& forced,
                            ProgramComparison& front) {
    const auto named = std::ranges::find(profiles, forced, &model::ProfileRecord::name);
    if (!forced.empty() && named != profiles.end()) return {IndexOf(profiles, named), Why::Forced};

    const auto listed = std::ranges::find_if(profiles, [&](const model::ProfileRecord& profile) {
        return std::ranges::any_of(profile.settings.applications, [&](const model::ApplicationEntry& program) {
            return front.IsProgram(program.path);
        });
    });
    if (listed != profiles.end()) return {IndexOf(profiles, listed), Why::Program};
    return {selected, Why::Selected};
}

}  // namespace kvn::service

// Chooses the profile in force.
#pragma once

#include <cstddef>
#include <string>

#include "model/profile.h"
#include "service/settings/profile_in_force.h"
#include "service/settings/program_path.h"

namespace kvn::service {

struct ProfileChoice {
    std::size_t profile = 0;
    Why why = Why::Selected;
};

// The forced profile, if one has that name; else the first one that lists the program in front; else the selected one.
// An empty name forces nothing.
ProfileChoice ChooseProfile(const model::ProfileSet& profiles, std::size_t selected, const std::wstring& forced,
                            ProgramComparison& front);

}  // namespace kvn::service

// The numbers by which engine, log and "Try the buttons" know the profiles that were in force.
#pragma once

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/critical_section.h"

namespace kvn::service {

// From any thread. Nothing is forgotten: there are as many as people give names to profiles.
class ProfileNumbers {
public:
    // From 1 on; always the same one for this profile of this mouse model.
    std::uint32_t NumberOf(const std::wstring& mouseModel, const std::wstring& profile) {
        const std::lock_guard lock(section);
        const std::pair named{mouseModel, profile};
        const auto place = std::ranges::find(names, named);
        const auto index = place - names.begin();
        if (place == names.end()) names.push_back(named);
        return static_cast<std::uint32_t>(index + 1);
    }

    // Empty for a number that no profile has.
    std::wstring NameOf(std::uint32_t number) const {
        const std::lock_guard lock(section);
        return number == 0 || number > names.size() ? std::wstring() : names[number - 1].second;
    }

private:
    mutable platform::CriticalSection section;
    std::vector<std::pair<std::wstring, std::wstring>> names;  // of model and profile
};

}  // namespace kvn::service

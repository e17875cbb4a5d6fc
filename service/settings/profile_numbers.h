// The numbers by which engine, log and "Try the buttons" identify the profiles.
#pragma once

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/critical_section.h"

namespace kvn::service {

// For any thread. Numbers are never forgotten: there are only as many as profile names.
class ProfileNumbers {
public:
    // Numbers start at 1; a profile of a mouse model always has the same one.
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

// The names of the profiles that were in force, by their numbers, for the log.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "platform/critical_section.h"

namespace kvn::service {

// From any thread.
class ProfileNames {
public:
    void Remember(std::uint32_t profile, const std::wstring& name) {
        const std::lock_guard lock(section);
        if (names.size() >= kMost) names.clear();
        names[profile] = name;
    }

    // Empty for a number that was not in force, or long ago.
    std::wstring NameOf(std::uint32_t profile) const {
        const std::lock_guard lock(section);
        const auto place = names.find(profile);
        return place == names.end() ? std::wstring() : place->second;
    }

private:
    static constexpr std::size_t kMost = 256;

    mutable platform::CriticalSection section;
    std::map<std::uint32_t, std::wstring> names;
};

}  // namespace kvn::service

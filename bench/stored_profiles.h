// The profile file of the sample mouse, filled with so many profiles for as long as the object lives.
#pragma once

#include <cstddef>
#include <string>

namespace kvn::bench {

class StoredProfiles {
public:
    // Each profile has ten programs and ten gestures.
    explicit StoredProfiles(std::size_t count);
    StoredProfiles(const StoredProfiles&) = delete;
    StoredProfiles& operator=(const StoredProfiles&) = delete;
    ~StoredProfiles();

    const std::wstring& Path() const { return path; }

private:
    std::wstring path;
};

}  // namespace kvn::bench

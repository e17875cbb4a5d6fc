// The profile file of the sample mouse, as the page will find it.
#pragma once

#include <cstddef>
#include <string>

namespace kvn::bench {

// The profile file of the sample mouse.
const std::wstring& SampleProfileFile();

class StoredProfiles {
public:
    // Fills the file with this many profiles, for as long as the object lives. Each has ten programs and ten gestures.
    explicit StoredProfiles(std::size_t count);
    StoredProfiles(const StoredProfiles&) = delete;
    StoredProfiles& operator=(const StoredProfiles&) = delete;
    ~StoredProfiles();
};

}  // namespace kvn::bench

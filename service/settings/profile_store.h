// The profiles of one mouse for the service: those of the profile file, with the registry's values first for the
// selected one. Never writes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "model/profile.h"
#include "model/stored_settings.h"

namespace kvn::service {

class ProfileStore {
public:
    // No mouse: one default profile.
    ProfileStore();
    // The mouse with these ids; reads nothing yet.
    ProfileStore(std::uint32_t mouseVid, std::uint32_t mousePid);

    // Reads registry and file. False if there is a file that could not be read or has no profile; then the profiles
    // stay as they were. Without a file there is one default profile.
    bool Read();

    // Files that the page has set aside since the last call, or since the store was created.
    std::vector<std::wstring> TakeNewlySetAside();

    const model::ProfileSet& Profiles() const { return profiles; }  // never empty
    std::size_t Selected() const { return selected; }
    // Every number is in its range, except those of flying scroll.
    model::ProfileSettings SettingsOf(std::size_t profile) const;

    const std::wstring& Folder() const { return folder; }
    const std::wstring& FilePath() const { return filePath; }

private:
    bool ReadFile();
    void Take(model::ProfileSet read);
    std::set<std::wstring> FilesSetAside() const;

    std::uint32_t vid = 0;
    std::uint32_t pid = 0;
    std::wstring folder;
    std::wstring filePath;
    model::ProfileSet profiles;
    std::size_t selected = 0;
    model::StoredSettings stored;
    std::set<std::wstring> knownSetAside;
};

}  // namespace kvn::service

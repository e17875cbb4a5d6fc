#include "service/settings/profile_store.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "model/profile_file.h"
#include "model/profile_list.h"
#include "model/registry_access.h"
#include "model/settings_store.h"
#include "platform/module.h"
#include "platform/texts.h"
#include "platform/unique_resource.h"
#include "resources/resource.h"

namespace kvn::service {
namespace {

// Without a choice of the user, flying scroll is off.
model::ProfileRecord NewProfile() {
    model::ProfileRecord record = model::NewProfileRecord();
    record.settings[model::SettingField::FlyingRevolutionCount] = model::kUnsetValue;
    record.settings.values = model::InitialValuesOf(record);
    return record;
}

model::ProfileSet DefaultProfiles() {
    model::ProfileRecord record = NewProfile();
    record.name = platform::LoadText(platform::ThisModule(), IDS_DEFAULT_PROFILE_NAME);
    return {std::move(record)};
}

// A drive that does not answer gives another error.
bool IsMissing(const std::wstring& path) {
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

std::wstring ArbitraryKeyText() {
    return platform::LoadText(platform::ThisModule(), IDS_FUNCTION_ARBITRARY_KEY);
}

}  // namespace

ProfileStore::ProfileStore() : profiles(DefaultProfiles()) {}

ProfileStore::ProfileStore(std::uint32_t mouseVid, std::uint32_t mousePid)
    : vid(mouseVid),
      pid(mousePid),
      folder(model::SettingsFolder()),
      filePath(folder + model::ProfileFileName(vid, pid)),
      profiles(DefaultProfiles()),
      knownSetAside(FilesSetAside()) {}

bool ProfileStore::Read() {
    stored = model::StoredSettingsFrom(model::ReadModelValues(vid, pid), ArbitraryKeyText());
    return ReadFile();
}

bool ProfileStore::ReadFile() {
    model::ProfileSet read;
    if (model::LoadProfileFile(filePath, read) > 0) {
        Take(std::move(read));
        return true;
    }
    if (!IsMissing(filePath)) return false;
    Take(DefaultProfiles());
    return true;
}

void ProfileStore::Take(model::ProfileSet read) {
    model::RepairAbnormalValues(read, NewProfile().settings.values);
    profiles = std::move(read);
    selected = model::SelectedProfileOf(profiles);
}

model::ProfileSettings ProfileStore::SettingsOf(std::size_t profile) const {
    const model::ProfileSettings& fromFile = profiles[profile].settings;
    return profile == selected ? model::CompletedFrom(stored, fromFile) : fromFile;
}

std::vector<std::wstring> ProfileStore::TakeNewlySetAside() {
    std::set<std::wstring> found = FilesSetAside();
    std::vector<std::wstring> added;
    std::ranges::set_difference(found, knownSetAside, std::back_inserter(added));
    knownSetAside = std::move(found);
    return added;
}

std::set<std::wstring> ProfileStore::FilesSetAside() const {
    std::set<std::wstring> paths;
    const std::wstring pattern = filePath.substr(0, filePath.rfind(L'.')) + L".broken-*.xml";
    WIN32_FIND_DATAW file{};
    const platform::UniqueFileSearch search(FindFirstFileW(pattern.c_str(), &file));
    if (!search) return paths;
    do paths.insert(folder + file.cFileName);
    while (FindNextFileW(search.Get(), &file));
    return paths;
}

}  // namespace kvn::service

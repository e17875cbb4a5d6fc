#include "bench/stored_profiles.h"

#include <shlobj.h>

#include "bench/property_sheet.h"
#include "bench/running_service.h"
#include "model/profile_file.h"
#include "model/registry_values.h"
#include "platform/special_folder.h"
#include "platform/texts.h"
#include "resources/resource.h"

namespace kvn::bench {
namespace {

constexpr std::size_t kEntries = 10;

model::ProfileSet Profiles(std::size_t count) {
    model::ProfileSet profiles(count, model::DefaultProfileRecord());
    for (std::size_t i = 0; i < count; ++i) {
        profiles[i].name = i == 0 ? L"Default" : L"Profile " + std::to_wstring(i);
        for (std::size_t k = 0; k < kEntries; ++k) {
            const std::wstring number = std::to_wstring(i * kEntries + k);
            profiles[i].settings.applications.push_back(
                {L"Program " + number, L"C:\\Program Files\\Maker\\Program" + number + L".exe"});
            profiles[i].settings.gestures.push_back({L"URDL", 37, L"Opens the window " + number, {{162, 16, 65}}});
        }
    }
    return profiles;
}

}  // namespace

const std::wstring& SampleProfileFile() {
    static const std::wstring file = platform::SpecialFolder(CSIDL_APPDATA) +
                                     platform::LoadText(PageModule(), IDS_SETTINGS_FOLDER) +
                                     model::MouseModelName(kSampleVid, kSamplePid) + L".xml";
    return file;
}

StoredProfiles::StoredProfiles(std::size_t count) {
    const std::wstring& file = SampleProfileFile();
    SHCreateDirectory(nullptr, file.substr(0, file.rfind(L'\\')).c_str());
    static_cast<void>(model::SaveProfileFile(file, Profiles(count)));
}

StoredProfiles::~StoredProfiles() {
    DeleteFileW(SampleProfileFile().c_str());
}

}  // namespace kvn::bench

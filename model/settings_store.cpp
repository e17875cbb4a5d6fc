#include "model/settings_store.h"

#include <shlobj.h>
#include <shlwapi.h>
#include <windows.h>

#include "model/profile_file.h"
#include "model/profile_list.h"
#include "model/registry_access.h"
#include "platform/module.h"
#include "platform/special_folder.h"
#include "platform/texts.h"
#include "resources/resource.h"

namespace kvn::model {
namespace {

OsVersion ReadOsVersion() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
    return {version.dwMajorVersion, version.dwMinorVersion};
}

void MakeDefaultProfile(MouseSettings& settings) {
    ProfileRecord record = NewProfileRecord();
    record.name = platform::LoadText(platform::ThisModule(), IDS_DEFAULT_PROFILE_NAME);
    settings.profiles.assign(1, record);
    settings.selectedProfile = 0;
}

// Puts the numbers of a new default profile into the registry, where the service looks for them; initial values replace
// abnormal ones. A number that could not be written is marked, so that the next apply writes it.
void PublishNewProfile(MouseSettings& settings) {
    SettingValues& values = settings.registrySettings.values;
    for (const SettingFieldRow& row : kSettingFields) {
        if (values[row.field] == kAbnormalValue) values[row.field] = settings.initialValues[row.field];
    }
    for (const RegistryWrite& write : AllNumbers(values)) {
        if (CarryOut(write, settings.device.vid, settings.device.pid)) continue;
        for (const SettingFieldRow& row : kSettingFields) {
            if (row.registryValue == write.value) values[row.field] = kAbnormalValue;
        }
    }
}

}  // namespace

std::wstring SettingsFolder() {
    return platform::SpecialFolder(CSIDL_APPDATA) + platform::LoadText(platform::ThisModule(), IDS_SETTINGS_FOLDER);
}

void MakeFolder(const std::wstring& folder) {
    if (!PathFileExistsW(folder.c_str())) SHCreateDirectory(nullptr, folder.c_str());
}

std::wstring ProfileFileName(std::uint32_t vid, std::uint32_t pid) {
    return MouseModelName(vid, pid) + L".xml";
}

bool LoadMouseSettings(MouseSettings& settings) {
    // Until the file has been read: memory may run out before that, and the page goes on without its profiles.
    settings.setFileAsideBeforeSaving = true;
    settings.os = ReadOsVersion();
    const std::wstring folder = SettingsFolder();
    MakeFolder(folder);
    settings.profileFilePath = folder + ProfileFileName(settings.device.vid, settings.device.pid);
    FinishOrRemoveInterruptedSave(settings.profileFilePath);

    if (LoadProfileFile(settings.profileFilePath, settings.profiles) > 0) {
        settings.setFileAsideBeforeSaving = false;
        settings.selectedProfile = SelectedProfileOf(settings.profiles);
        settings.registrySettings = CheckedCopy(settings.Selected());
        return true;
    }
    MakeDefaultProfile(settings);
    settings.registrySettings = CheckedCopy(settings.Selected());
    const bool saved = SaveProfiles(settings);
    // A file that could not even be set aside is in use. It and the registry still hold the user's settings.
    if (!settings.setFileAsideBeforeSaving) PublishNewProfile(settings);
    return saved;
}

bool WriteRegistryValues(MouseSettings& settings) {
    bool written = true;
    for (const RegistryWrite& write : ChangedValues(settings.registrySettings, settings.Selected())) {
        if (!CarryOut(write, settings.device.vid, settings.device.pid)) written = false;
    }
    if (written) settings.registrySettings = settings.Selected();
    return written;
}

bool SaveProfiles(MouseSettings& settings) {
    if (settings.setFileAsideBeforeSaving) {
        // The file of an interrupted save may be the only one that has the profiles.
        FinishOrRemoveInterruptedSave(settings.profileFilePath);
        if (!SetAsideProfileFile(settings.profileFilePath)) return false;
    }
    settings.setFileAsideBeforeSaving = false;

    ProfileRecord& first = settings.profiles.front();
    first.vid = static_cast<std::uint16_t>(settings.device.vid);
    first.pid = static_cast<std::uint16_t>(settings.device.pid);
    first.selectedIndex = static_cast<std::int32_t>(settings.selectedProfile);
    return SaveProfileFile(settings.profileFilePath, settings.profiles);
}

}  // namespace kvn::model

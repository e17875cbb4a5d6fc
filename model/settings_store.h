// Loads the attached mouse's settings from disk and writes changes to registry and disk.
#pragma once

#include <cstdint>
#include <string>

#include "model/mouse_settings.h"

namespace kvn::model {

// The folder of the profile files, with a final backslash; it need not exist yet.
[[nodiscard]] std::wstring SettingsFolder();

// Creates the folder and those above it if they are missing.
void MakeFolder(const std::wstring& folder);

// The name of a mouse model's profile file in that folder.
[[nodiscard]] std::wstring ProfileFileName(std::uint32_t vid, std::uint32_t pid);

// Loads the profiles of the mouse in settings.device, or creates a default profile and writes it at once. A file that
// cannot be read is set aside first, and one that is in use is left alone. An interrupted save is finished if the file
// is missing and only the renaming was left to do; otherwise its file is removed. settings.initialValues must be set
// before. False if the file could not be read or written; the settings hold at least one profile in any case.
[[nodiscard]] bool LoadMouseSettings(MouseSettings& settings);

// Writes the registry values in which the selected profile differs from settings.registrySettings, all of them even if
// one fails, and then remembers them as written. False if one failed; then nothing is remembered.
[[nodiscard]] bool WriteRegistryValues(MouseSettings& settings);

// Writes the profile file with the device's ids and the selection. False: the file is unchanged.
[[nodiscard]] bool SaveProfiles(MouseSettings& settings);

}  // namespace kvn::model

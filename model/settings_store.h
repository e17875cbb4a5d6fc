// Loads the attached mouse's settings from disk and writes changes to registry and disk.
#pragma once

#include <cstdint>
#include <string>

#include "model/mouse_settings.h"

namespace kvn::model {

// The folder of the profile files, with a final backslash; it need not be there yet.
[[nodiscard]] std::wstring SettingsFolder();

// Makes a folder that is missing, and those above it.
void MakeFolder(const std::wstring& folder);

// The name of a model's profile file in that folder.
[[nodiscard]] std::wstring ProfileFileName(std::uint32_t vid, std::uint32_t pid);

// Loads the profiles of the mouse in settings.device, or makes a default profile and writes it at once; a file of which
// nothing can be read is set aside first, and one that is in use is left alone. A save that was cut off is finished
// if the file is missing and nothing but the renaming was to come, or else removed. settings.initialValues must be
// there already. False when the file could not be read or written; the settings hold at least one profile in any case.
[[nodiscard]] bool LoadMouseSettings(MouseSettings& settings);

// Writes the registry values in which the selected profile differs from settings.registrySettings, all of them even
// when one fails, and then remembers them as written. False when one failed; nothing is remembered then.
[[nodiscard]] bool WriteRegistryValues(MouseSettings& settings);

// Writes the profile file with the device's ids and the selection. False: the file is what it was.
[[nodiscard]] bool SaveProfiles(MouseSettings& settings);

}  // namespace kvn::model

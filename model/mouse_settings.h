// Everything that is edited while the page is open: one plain record that the panel owns and panes and dialogs borrow.
#pragma once

#include <cstddef>
#include <string>

#include "model/device_record.h"
#include "model/function_catalogue.h"
#include "model/profile.h"

namespace kvn::model {

struct MouseSettings {
    OsVersion os;  // as the host program sees it
    DeviceRecord device;

    ProfileSet profiles;  // never empty once a model is loaded
    std::size_t selectedProfile = 0;
    std::wstring profileFilePath;
    // The file has not been read yet or could not be read. Before writing, anything at its path is renamed.
    bool setFileAsideBeforeSaving = false;

    SettingValues initialValues;  // for "Return to initial values"
    // The assumed contents of the mouse's registry values: the selected profile as loaded, later as written.
    ProfileSettings registrySettings;

    ProfileSettings& Selected() { return profiles[selectedProfile].settings; }
    const ProfileSettings& Selected() const { return profiles[selectedProfile].settings; }

    // Whether the slot is one of the mouse's buttons; the others offer fewer functions.
    bool IsOnMouse(ButtonSlot slot) const { return static_cast<int>(slot) < device.buttonCount; }
};

}  // namespace kvn::model

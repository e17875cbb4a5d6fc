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
    // Nothing was read from the file yet, or nothing could be read: anything at its path is renamed before the file is
    // written.
    bool setFileAsideBeforeSaving = false;

    SettingValues initialValues;  // behind "Return to initial values"
    // The assumed content of the mouse's registry values: the selected profile as loaded, later as written.
    ProfileSettings registrySettings;

    ProfileSettings& Selected() { return profiles[selectedProfile].settings; }
    const ProfileSettings& Selected() const { return profiles[selectedProfile].settings; }

    // Whether the slot is one of the mouse's buttons; the others offer fewer functions.
    bool IsOnMouse(ButtonSlot slot) const { return static_cast<int>(slot) < device.buttonCount; }
};

}  // namespace kvn::model

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
    // Nothing was read from the file, or not yet: whatever stands at the path is renamed before it is written.
    bool setFileAsideBeforeSaving = false;

    SettingValues initialValues;  // behind "Return to initial values"
    // What the model's registry values are taken to hold: the selected profile as loaded, later what was written.
    ProfileSettings registrySettings;

    ProfileSettings& Selected() { return profiles[selectedProfile].settings; }
    const ProfileSettings& Selected() const { return profiles[selectedProfile].settings; }

    // Whether the slot is one of the model's buttons; the others offer fewer functions.
    bool IsOnMouse(ButtonSlot slot) const { return static_cast<int>(slot) < device.buttonCount; }
};

}  // namespace kvn::model

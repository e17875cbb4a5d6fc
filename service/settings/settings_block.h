// A profile's settings as the engine's block.
#pragma once

#include <cstdint>

#include "model/device_record.h"
#include "model/profile.h"
#include "service/engine/engine_settings.h"

namespace kvn::service {

// Flying scroll is off if its number of revolutions is invalid, or if the mouse lacks it; a speed out of range is 5.
// Gestures with an invalid stroke, and those beyond kMaxGestures, are left out. The number identifies the profile.
EngineSettings SettingsBlock(const model::ProfileSettings& settings, const model::DeviceRecord& mouse,
                             std::uint32_t profile);

}  // namespace kvn::service

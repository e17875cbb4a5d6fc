// A profile's settings as the engine's block.
#pragma once

#include <cstdint>

#include "model/device_record.h"
#include "model/profile.h"
#include "service/engine/engine_settings.h"

namespace kvn::service {

// Flying scroll is off when its number of revolutions is none, or when the mouse lacks it; its speeds are 5 where they
// are out of range. Gestures whose stroke is none, or that come after kMaxGestures others, are left out. The number
// names the profile.
EngineSettings SettingsBlock(const model::ProfileSettings& settings, const model::DeviceRecord& mouse,
                             std::uint32_t profile);

}  // namespace kvn::service

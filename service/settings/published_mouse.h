// The attached mouse in the registry, where the page reads it.
#pragma once

#include "model/device_record.h"

namespace kvn::service {

// Deletes the six values first, then writes them, VID and PID last: a page that begins to read in between waits for
// them. False if one could not be written.
[[nodiscard]] bool PublishMouse(const model::DeviceRecord& mouse);

}  // namespace kvn::service

// The attached mouse as the service publishes it in the registry for the page.
#pragma once

#include <string>

#include "model/device_record.h"

namespace kvn::service_double {

// False if a value could not be written.
bool PublishMouse(const model::DeviceRecord& mouse);

// Missing values count as removed.
void RemovePublishedMouse();

// One line for the log.
std::wstring Describe(const model::DeviceRecord& mouse);

}  // namespace kvn::service_double

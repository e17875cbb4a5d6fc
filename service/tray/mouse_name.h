// The name of a mouse where space is short.
#pragma once

#include <string>

#include "model/device_record.h"

namespace kvn::service {

// Its ids, as in "1234:5678": users can look them up, and the profile file's name contains them.
std::wstring MouseName(const model::DeviceRecord& mouse);

}  // namespace kvn::service

// What a mouse is called where there is little room.
#pragma once

#include <string>

#include "model/device_record.h"

namespace kvn::service {

// Its ids, as in "1234:5678": people can look them up, and the profile file's name has them.
std::wstring MouseName(const model::DeviceRecord& mouse);

}  // namespace kvn::service

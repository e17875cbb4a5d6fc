// The value of --mouse: VID:PID:BUTTONS:TILT[:IMAGE[:FLAG]], or "none".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/device_record.h"

namespace kvn::service {

// The mouse to publish in the place of the attached one; without one: as if none were attached.
struct ChosenMouse {
    std::optional<model::DeviceRecord> mouse;
};

// Ids are hexadecimal and neither is 0, which would mean the base key itself; the rest is decimal. Nothing when the
// text is anything else.
std::optional<ChosenMouse> ParseChosenMouse(std::wstring_view text);

// The text that says the same.
std::wstring TextOf(const ChosenMouse& choice);

}  // namespace kvn::service

// The value of --mouse: VID:PID:BUTTONS:TILT[:IMAGE[:FLAG]], or "none".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/device_record.h"

namespace kvn::service {

// The mouse to publish in place of the attached one; empty: as if none were attached.
struct ChosenMouse {
    std::optional<model::DeviceRecord> mouse;
};

// The ids are hexadecimal and must not be 0, which would mean the base key itself; the rest is decimal. Nothing for any
// other text.
std::optional<ChosenMouse> ParseChosenMouse(std::wstring_view text);

// The text with the same meaning.
std::wstring TextOf(const ChosenMouse& choice);

}  // namespace kvn::service

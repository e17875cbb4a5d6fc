// The text of --status.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/device_record.h"
#include "service/settings/settings_hub.h"

namespace kvn::service {

struct Status {
    std::optional<model::DeviceRecord> mouse;
    std::wstring profile;
    Why why = Why::Selected;
    bool isPaused = false;
    bool isHookAlive = false;
    std::uint64_t reinstalled = 0;
    std::uint64_t presses = 0;
    std::uint64_t actions = 0;
    std::uint64_t switches = 0;
};

// Lines of key=value. Without a mouse its numbers are 0.
std::wstring StatusText(const Status& status);

}  // namespace kvn::service

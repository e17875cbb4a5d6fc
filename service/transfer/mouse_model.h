// The mouse model whose settings are exported and imported.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kvn::service {

struct MouseModel {
    std::uint32_t vid = 0;
    std::uint32_t pid = 0;

    friend bool operator==(const MouseModel&, const MouseModel&) = default;
};

// The model that is published in the registry, which the page would show; nothing if there never was one.
std::optional<MouseModel> PublishedModel();

std::wstring ProfileFilePath(const MouseModel& mouse);

}  // namespace kvn::service

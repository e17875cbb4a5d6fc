// Copies part of the screen, and saves the copy as a PNG file.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kvn::control_panel {

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;  // 0x00RRGGBB, rows from the top

    bool operator==(const Picture&) const = default;
};

// The rectangle is in screen coordinates. Both throw HostError.
Picture CopyScreen(const RECT& rectangle);
void SavePng(const Picture& picture, const std::wstring& file);

}  // namespace kvn::control_panel

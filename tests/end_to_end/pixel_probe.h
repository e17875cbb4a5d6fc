// What the test program and the hook in pixel_probe.dll share. Pixels can be read only by the process that paints them,
// so the hook reads them there: when a window gets the message kReadPixelsMessage, it writes them into the shared
// memory kSharedPixels.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

namespace kvn::end_to_end {

inline constexpr wchar_t kReadPixelsMessage[] = L"KvnEndToEndReadPixels";
inline constexpr wchar_t kSharedPixels[] = L"KvnEndToEndPixels";
inline constexpr wchar_t kPixelProbeModule[] = L"pixel_probe.dll";
inline constexpr char kPixelHook[] = "OnMessage";  // a WH_CALLWNDPROC procedure

inline constexpr std::size_t kMaxPixels = 1024 * 1024;  // a whole screen under Wine

struct SharedPixels {
    int width;
    int height;
    std::array<COLORREF, kMaxPixels> pixels;  // row by row from the top
};

}  // namespace kvn::end_to_end

// Sizes for the monitor that a window is on.
#pragma once

#include <windows.h>

#include "platform/unique_resource.h"

namespace kvn::service {

inline constexpr UINT kPlainDpi = 96;
// Sent since Windows 8.1 when a window moves to a monitor of another resolution. Both words of wParam hold the
// resolution; lParam points to the proposed position.
inline constexpr UINT kDpiChangedMessage = 0x02E0;

using UniqueFont = platform::Owned<HFONT, &DeleteObject>;

UINT DpiOf(HWND window);

// The pixels of a length given for 96 dots per inch.
constexpr int Scaled(int length, UINT dpi) {
    return (length * static_cast<int>(dpi) + static_cast<int>(kPlainDpi) / 2) / static_cast<int>(kPlainDpi);
}

// The font of Windows' messages; null if there is none.
UniqueFont MessageFont(UINT dpi);

}  // namespace kvn::service

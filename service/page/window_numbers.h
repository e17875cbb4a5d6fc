// The private messages and timers of the service's window, besides the protocol's (WM_APP + 1 to 7).
#pragma once

#include <windows.h>

namespace kvn::service {

inline constexpr UINT kRunPostedMessage = WM_APP + 0x20;
inline constexpr UINT kTrayMessage = WM_APP + 0x21;        // from the icon, version 3: lParam is the event
inline constexpr UINT kHelpFailedMessage = WM_APP + 0x22;  // the help page could not be opened

enum class Timer : UINT_PTR { GestureEdit = 1, HookCheck = 2, ReleaseCheck = 3 };

}  // namespace kvn::service

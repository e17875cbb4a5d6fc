// The protocol between the tests and the recorder, a separate program.
#pragma once

#include <windows.h>

namespace kvn::service_end_to_end {

inline constexpr wchar_t kRecorderClass[] = L"KvnRecorder";
// Posted: the program does not answer for wParam milliseconds.
inline constexpr UINT kHangFor = WM_APP + 1;

}  // namespace kvn::service_end_to_end

// The protocol between the tests and the recorder, a separate program.
#pragma once

#include <windows.h>

namespace kvn::service_end_to_end {

inline constexpr wchar_t kRecorderClass[] = L"KvnRecorder";
// Posted: the program does not answer for wParam milliseconds.
inline constexpr UINT kHangFor = WM_APP + 1;

// A property of the window: where it has last seen the pointer, with the horizontal coordinate in the low word. Before
// the first time it is kUnseenPointer.
inline constexpr wchar_t kPointerProperty[] = L"KvnRecorderPointer";
inline constexpr DWORD kUnseenPointer = 0xFFFFFFFF;

}  // namespace kvn::service_end_to_end

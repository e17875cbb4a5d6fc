// The protocol between the tests and the programs that replace Windows' own.
#pragma once

namespace kvn::service_end_to_end {

// The environment variable that names the file to which each of them adds a line.
inline constexpr wchar_t kOpenedRecord[] = L"KVN_OPENED_RECORD";

}  // namespace kvn::service_end_to_end

// The version of the program, as the build gives it.
#pragma once

namespace kvn::service {

inline constexpr wchar_t kVersion[] = KVN_VERSION_WIDE;

}  // namespace kvn::service

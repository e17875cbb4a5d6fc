// The two halves of a character outside the basic plane of Unicode.
#pragma once

namespace kvn::test {

inline constexpr wchar_t kHighSurrogate = 0xD83D;
inline constexpr wchar_t kLowSurrogate = 0xDE00;

}  // namespace kvn::test

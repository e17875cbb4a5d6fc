// The usual scales of a screen.
#pragma once

namespace kvn::test {

inline constexpr int kScales[] = {96, 120, 144, 192};  // dots per inch

}  // namespace kvn::test

// One notch of a wheel, as Windows reports it.
#pragma once

#include <cstdint>

namespace kvn::service {

inline constexpr std::int32_t kNotch = 120;

}  // namespace kvn::service

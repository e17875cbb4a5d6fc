// How the flying wheel runs down: it begins with a rate of notches a second, which halves every 0.7 s, until fewer than
// 2 a second are left.
#pragma once

#include <cstdint>
#include <optional>

namespace kvn::service {

// When the n-th notch (from 1 on) is due, in milliseconds after the beginning; nothing once it has run down. firstRate
// is in notches a second, without a sign.
std::optional<std::uint32_t> TimeOfNotch(std::int32_t n, std::int32_t firstRate);

// Milliseconds from the beginning until it has run down.
std::uint32_t FlightTime(std::int32_t firstRate);

}  // namespace kvn::service

// How the flying wheel slows down: the first rate, in notches a second, halves every 0.7 s until fewer than 2 a second
// are left.
#pragma once

#include <cstdint>
#include <optional>

namespace kvn::service {

// When the n-th notch (from 1 on) is due, in milliseconds after the beginning; nothing after the wheel has stopped.
// firstRate is in notches a second, without a sign.
std::optional<std::uint32_t> TimeOfNotch(std::int32_t n, std::int32_t firstRate);

// Milliseconds from the beginning until the wheel stops.
std::uint32_t FlightTime(std::int32_t firstRate);

}  // namespace kvn::service

#include "service/engine/flying_curve.h"

#include <cmath>
#include <numbers>

namespace kvn::service {
namespace {

constexpr double kHalving = 700;  // milliseconds
constexpr double kLastRate = 2;   // notches a second

// How long until the rate has become this part of the first one.
double TimeUntil(double part) {
    return -kHalving * std::log2(part);
}

// The number of notches if the wheel never stopped: the whole area below the curve.
double Endless(double firstRate) {
    return firstRate * kHalving / 1000 / std::numbers::ln2;
}

}  // namespace

std::optional<std::uint32_t> TimeOfNotch(std::int32_t n, std::int32_t firstRate) {
    if (n < 1 || firstRate <= kLastRate) return std::nullopt;
    const double left = 1 - n / Endless(firstRate);
    if (left * firstRate < kLastRate) return std::nullopt;
    return static_cast<std::uint32_t>(std::lround(TimeUntil(left)));
}

std::uint32_t FlightTime(std::int32_t firstRate) {
    if (firstRate <= kLastRate) return 0;
    return static_cast<std::uint32_t>(std::lround(TimeUntil(kLastRate / firstRate)));
}

}  // namespace kvn::service

#include "service/engine/tilt_push.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

#include "service/engine/notch.h"

namespace kvn::service {
namespace {

constexpr std::uint32_t kPushGap = 300;
constexpr std::int64_t kSpeedUnit = 4;
// No tilt reports more at once; a broken driver must not cause a flood of keys.
constexpr std::int64_t kMostNotchesAtOnce = 8;

std::int64_t SizeOf(std::int32_t delta) {
    return std::abs(std::int64_t{delta});
}

}  // namespace

void TiltPush::Begin(const Press& decided) {
    *this = {};
    press = decided;
}

void TiltPush::Expire(std::uint32_t time) {
    if (time - lastReport >= kPushGap) press.isKnown = false;
}

bool TiltPush::AddReport(std::uint32_t time) {
    lastReport = time;
    return !std::exchange(hasReport, true);
}

std::int32_t TiltPush::AddForNotches(std::int32_t delta) {
    notchPart += SizeOf(delta);
    const std::int64_t notches = notchPart / kNotch;
    notchPart %= kNotch;
    return static_cast<std::int32_t>(std::min(notches, kMostNotchesAtOnce));
}

std::int32_t TiltPush::AddForScroll(std::int32_t delta, std::int32_t speed) {
    quartersLeft += SizeOf(delta) * speed;
    const std::int64_t amount = quartersLeft / kSpeedUnit;
    quartersLeft %= kSpeedUnit;
    return static_cast<std::int32_t>(std::min<std::int64_t>(amount, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace kvn::service

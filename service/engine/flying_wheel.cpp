#include "service/engine/flying_wheel.h"

#include <cstdlib>

#include "service/engine/flying_curve.h"
#include "service/engine/notch.h"

namespace kvn::service {
namespace {

constexpr std::int64_t kNotchesOfFlick = 6;
constexpr std::int32_t kMostFlicks = 5;
constexpr std::uint32_t kFlickGap = 400;  // from the last notch of a flick to the next flick
constexpr std::int32_t kRateOfSpeed = 8;

constexpr std::int32_t SpeedOrDefault(std::int32_t speed) {
    return speed < 1 || speed > 10 ? 5 : speed;
}

// The longest time between two notches of one flick.
std::uint32_t NotchGapOf(const FlyingScroll& flying) {
    return static_cast<std::uint32_t>(90 - 6 * SpeedOrDefault(flying.revolutionSpeed));
}

}  // namespace

bool IsOn(const FlyingScroll& flying) {
    return flying.flicks >= 1 && flying.flicks <= kMostFlicks;
}

std::int32_t FirstRateOf(const FlyingScroll& flying) {
    return kRateOfSpeed * SpeedOrDefault(flying.scrollSpeed);
}

std::int32_t FlyingWheel::AddReport(std::int32_t delta) {
    if ((notchPart < 0) != (delta < 0)) notchPart = 0;
    notchPart += delta;
    const std::int64_t notches = notchPart / kNotch;
    notchPart %= kNotch;
    return static_cast<std::int32_t>(notches);
}

bool FlyingWheel::Count(std::int32_t notches, std::uint32_t time, const FlyingScroll& flying) {
    if (isFlying) return false;
    if (isCounting && IsOtherWay(notches)) Stop();
    isTowardsUser = notches < 0;
    if (!isCounting || time - lastNotch > NotchGapOf(flying)) BeginRun(time);
    const bool isFlickNow = AddToRun(notches, time);
    if (!isFlickNow || flicksBefore + 1 < flying.flicks) return false;
    BeginFlight(time, flying);
    return true;
}

bool FlyingWheel::AddToRun(std::int32_t notches, std::uint32_t time) {
    const bool wasFlick = run >= kNotchesOfFlick;
    isCounting = true;
    run += std::abs(std::int64_t{notches});
    lastNotch = time;
    return !wasFlick && run >= kNotchesOfFlick;
}

void FlyingWheel::BeginRun(std::uint32_t time) {
    if (run >= kNotchesOfFlick) {
        ++flicksBefore;
        lastFlickEnd = lastNotch;
    }
    if (time - lastFlickEnd > kFlickGap) flicksBefore = 0;
    run = 0;
}

void FlyingWheel::BeginFlight(std::uint32_t time, const FlyingScroll& flying) {
    Stop();
    isFlying = true;
    flightBegin = time;
    flightTime = FlightTime(FirstRateOf(flying));
}

void FlyingWheel::Stop() {
    isFlying = isCounting = false;
    run = 0;
    flicksBefore = 0;
}

void FlyingWheel::Expire(std::uint32_t time) {
    if (isFlying && time - flightBegin >= flightTime) Stop();
    if (isCounting && time - lastNotch > kFlickGap) Stop();
}

}  // namespace kvn::service

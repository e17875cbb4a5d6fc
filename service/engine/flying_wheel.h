// Flying scroll: counts the flicks of the wheel, and decides whether it flies.
#pragma once

#include <cstdint>

#include "service/engine/engine_settings.h"

namespace kvn::service {

// Whether flying scroll is on.
bool IsOn(const FlyingScroll& flying);

// The first rate of a flight, in notches a second.
std::int32_t FirstRateOf(const FlyingScroll& flying);

class FlyingWheel {
public:
    // Adds up the wheel's reports; returns the whole notches, with their sign.
    std::int32_t AddReport(std::int32_t delta);

    bool IsFlying() const { return isFlying; }
    // Whether notches of this sign stop the flight.
    bool IsAgainstFlight(std::int32_t notches) const { return isFlying && IsOtherWay(notches); }
    // Counts notches; true if the wheel begins to fly with these.
    bool Count(std::int32_t notches, std::uint32_t time, const FlyingScroll& flying);

    // Ends the flight, and forgets earlier notches.
    void Stop();
    // The same, and starts the sum of the reports at zero again.
    void Forget() { *this = {}; }
    // Ends a flight that is over, and forgets old notches.
    void Expire(std::uint32_t time);

private:
    bool IsOtherWay(std::int32_t notches) const { return (notches < 0) != isTowardsUser; }
    // True if these notches make the run a flick.
    bool AddToRun(std::int32_t notches, std::uint32_t time);
    void BeginRun(std::uint32_t time);
    void BeginFlight(std::uint32_t time, const FlyingScroll& flying);

    std::int64_t notchPart = 0;  // less than a notch, with its sign

    bool isCounting = false;
    bool isTowardsUser = false;  // the direction of the counted notches, or of the flight
    std::int64_t run = 0;        // notches without a longer gap
    std::uint32_t lastNotch = 0;
    std::int32_t flicksBefore = 0;  // flicks in a row before the run
    std::uint32_t lastFlickEnd = 0;

    bool isFlying = false;
    std::uint32_t flightBegin = 0;
    std::uint32_t flightTime = 0;
};

}  // namespace kvn::service

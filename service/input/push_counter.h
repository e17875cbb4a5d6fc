// Counts pushes of tilts: reports to one side that follow each other closely are one push.
#pragma once

#include <cstdint>

namespace kvn::service {

class PushCounter {
public:
    // Whether this report begins a push. A negative delta is to the left.
    bool Begins(std::int32_t delta, std::uint32_t time) {
        const bool isLeft = delta < 0;
        const bool goesOn = isKnown && isLeft == wasLeft && time - lastReport < kPushGap;
        isKnown = true;
        wasLeft = isLeft;
        lastReport = time;
        return !goesOn;
    }

private:
    static constexpr std::uint32_t kPushGap = 300;  // milliseconds

    bool isKnown = false;
    bool wasLeft = false;
    std::uint32_t lastReport = 0;
};

}  // namespace kvn::service

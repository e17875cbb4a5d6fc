// One push of a tilt: its reports less than 300 ms apart. Each push is decided once, like a press.
#pragma once

#include "service/engine/press.h"

namespace kvn::service {

class TiltPush {
public:
    // The press that the push represents.
    const Press& AsPress() const { return press; }

    // A push is over when no report has come for 300 ms. Call it with each event, before the clock wraps around.
    void Expire(std::uint32_t time);
    // Whether a report of this control belongs to the push.
    bool Takes(model::ButtonSlot control) const { return press.isKnown && press.control == control; }
    void Begin(const Press& decided);

    // The push does nothing more; the rest of its reports are kept or passed as before.
    void EndFunction() { isOver = true; }
    bool IsOver() const { return isOver; }

    // Adds a report; true for the first one.
    bool AddReport(std::uint32_t time);
    // Adds a report; returns the number of whole notches that it completes.
    std::int32_t AddForNotches(std::int32_t delta);
    // Adds a report; returns the amount to scroll at this speed, rounded down. The remainder is kept.
    std::int32_t AddForScroll(std::int32_t delta, std::int32_t speed);

private:
    Press press;
    bool isOver = false;
    bool hasReport = false;
    std::uint32_t lastReport = 0;
    std::int64_t notchPart = 0;     // less than a notch
    std::int64_t quartersLeft = 0;  // quarters of a unit
};

}  // namespace kvn::service

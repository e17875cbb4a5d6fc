// The part of the engine's oracle for tilts.
#include <algorithm>
#include <cstdlib>
#include <limits>

#include "tests/service_engine/engine_oracle.h"
#include "tests/service_engine/oracle_judgements.h"

namespace kvn::service {
namespace {

using enum model::ButtonSlot;

}  // namespace

bool EngineOracle::BelongsToPush(Place report, Place later) const {
    const EngineInput& one = At(report).input;
    const EngineInput& other = At(later).input;
    return SideOf(one.mouse.delta) == SideOf(other.mouse.delta) && other.time - one.time < 300;
}

// The first report of the push to which the current tilt report belongs.
EngineOracle::Place EngineOracle::FirstOfPush() const {
    Place first = Now();
    for (Place k = first - 1; k >= 0; --k) {
        if (!IsMouse(k, MouseEventKind::Tilt) || At(k).input.mouse.delta == 0) continue;
        if (!BelongsToPush(k, first)) break;
        first = k;
    }
    return first;
}

// The sum of a push's reports, either unchanged or in quarters of the scrolled amount.
std::int64_t EngineOracle::PushSum(Place first, Place last, bool isScroll) const {
    std::int64_t sum = 0;
    for (Place k = first; k <= last; ++k) {
        if (!IsMouse(k, MouseEventKind::Tilt)) continue;
        sum += std::abs(std::int64_t{At(k).input.mouse.delta}) * (isScroll ? SpeedAt(k) : 1);
    }
    return sum;
}

void EngineOracle::AnswerTilt() {
    const Place first = FirstOfPush();
    history.back().isNewPress = first == Now();
    const auto control = At(Now()).input.mouse.delta < 0 ? TiltLeft : TiltRight;
    const bool isOut = SwitchAt(InputKind::Pause, first) || SwitchAt(InputKind::Overload, first);
    if (isOut || KindAt(control, first) == 'n') return;
    history.back().answer.isKept = true;
    for (Place k = first + 1; k < Now(); ++k) {
        if (EndsEverything(k)) return;
        if (At(k).input.kind == InputKind::Settings && !HasSameFunction(control, first, k)) return;
    }
    AnswerTiltReport(first);
}

void EngineOracle::AnswerTiltReport(Place first) {
    const Place now = Now();
    Order order = OrderOf(first, OrderKind::Note);
    order.isOfPress = first == now;
    const char kind = KindOfCode(order.function);
    const bool isScroll = order.function == 33 || order.function == 34;
    const std::int64_t unit = isScroll ? 4 : 120;
    const std::int64_t steps = PushSum(first, now, isScroll) / unit - PushSum(first, now - 1, isScroll) / unit;
    if (isScroll && steps > 0) {
        order.kind = OrderKind::Scroll;
        const auto size = std::min<std::int64_t>(steps, std::numeric_limits<std::int32_t>::max());
        order.amount = static_cast<std::int32_t>(order.function == 33 ? -size : size);
        return Add(order);
    }
    std::int64_t acts = kind == '-' ? 0 : (first == now ? 1 : 0);
    if (kind == 'r') acts = isScroll ? 0 : std::min<std::int64_t>(steps, 8);
    if (acts == 0 && first == now) Add(order);
    order.kind = OrderKind::Act;
    for (; acts > 0; --acts) {
        Add(order);
        order.isOfPress = false;
    }
}

}  // namespace kvn::service

// The part of the engine's oracle for the wheel and flying scroll.
#include <cmath>
#include <cstdlib>
#include <vector>

#include "tests/service_engine/engine_oracle.h"
#include "tests/service_engine/oracle_judgements.h"

namespace kvn::service {

// The start of the current flight. One that has ended by the last mouse event does not count.
EngineOracle::Place EngineOracle::FlightUnderWay() const {
    Place flight = Now() - 1;
    while (flight >= 0 && !HasOrder(flight, OrderKind::FlyBegin)) {
        if (HasOrder(flight, OrderKind::FlyEnd)) return -1;
        --flight;
    }
    if (flight < 0) return -1;
    const double lasts = std::round(700 * std::log2(4.0 * OrFive(SettingsAt(flight).flying.scrollSpeed)));
    for (Place k = flight; k <= Now(); ++k) {
        const bool isEvent = At(k).input.kind == InputKind::Mouse;
        if (isEvent && static_cast<double>(At(k).input.time - At(flight).input.time) >= lasts) return -1;
    }
    return flight;
}

bool EngineOracle::StopsFlight(Place flight) const {
    const Place now = Now();
    const EngineInput& input = At(now).input;
    if (IsWheelOffAt(now) || input.kind == InputKind::WindowInFront) return true;
    if (input.kind != InputKind::Mouse) return false;
    if (input.mouse.kind == MouseEventKind::Press) return true;
    if (input.mouse.kind == MouseEventKind::Tilt) return input.mouse.delta != 0;
    return At(now).notches != 0 && SideOf(At(now).notches) != SideOf(At(flight).notches);
}

// The notches that the wheel's current report completes.
std::int64_t EngineOracle::NotchesNow() const {
    const Place now = Now();
    const std::int64_t delta = At(now).input.mouse.delta;
    if (delta == 0 || SwitchAt(InputKind::Pause, now) || !IsFlyingOn(SettingsAt(now))) return 0;
    std::int64_t before = 0;
    for (Place k = now - 1; k >= 0 && !IsWheelOffAt(k); --k) {
        const std::int64_t other = IsMouse(k, MouseEventKind::Wheel) ? At(k).input.mouse.delta : 0;
        if (other == 0) continue;
        if (SideOf(other) != SideOf(delta)) break;
        // Off or paused from the beginning of the history on.
        if (SwitchAt(InputKind::Pause, k) || !IsFlyingOn(SettingsAt(k))) break;
        before += other;
    }
    return (before + delta) / 120 - before / 120;
}

// The number of flicks in a row, including the one that these notches complete; 0 if they complete none.
int EngineOracle::FlicksNow() const {
    struct Run {
        std::int64_t begin;
        std::int64_t end;
        std::int64_t notches;
    };
    std::vector<Run> runs;  // the latest first
    std::int64_t later = 0, gap = 0;
    const Place now = Now();
    for (Place k = now; k >= 0 && !IsWheelOffAt(k); --k) {
        const Entry& entry = At(k);
        if (entry.notches == 0) continue;
        if (SideOf(entry.notches) != SideOf(At(now).notches) || entry.isInFlight) break;
        if (HasOrder(k, OrderKind::FlyBegin)) break;
        if (runs.empty() || later - entry.input.time > gap) runs.push_back({0, entry.input.time, 0});
        runs.back().begin = entry.input.time;
        runs.back().notches += std::abs(entry.notches);
        later = entry.input.time;
        gap = 90 - 6 * OrFive(SettingsAt(k).flying.revolutionSpeed);
    }
    if (runs.empty() || runs[0].notches < 6 || runs[0].notches - std::abs(At(now).notches) >= 6) return 0;
    int flicks = 1;
    std::int64_t next = runs[0].begin;
    for (std::size_t index = 1; index < runs.size(); ++index) {
        if (runs[index].notches < 6) continue;
        if (next - runs[index].end > 400) break;
        ++flicks;
        next = runs[index].begin;
    }
    return flicks;
}

void EngineOracle::AnswerWheel() {
    const Place now = Now();
    if (At(now).notches == 0 || At(now).isInFlight) return;
    const FlyingScroll& flying = SettingsAt(now).flying;
    const int flicks = FlicksNow();
    if (flicks == 0 || flicks < flying.flicks) return;
    Order begin;
    begin.kind = OrderKind::FlyBegin;
    begin.amount = SideOf(At(now).notches) * 8 * OrFive(flying.scrollSpeed);
    Add(begin);
}

}  // namespace kvn::service

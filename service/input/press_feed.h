// The user's presses as they happen, for a window that shows them: the hook thread adds them, and the watching thread
// removes them. Neither waits for the other.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>

#include "platform/unique_resource.h"
#include "service/engine/orders.h"
#include "service/engine/press.h"
#include "service/input/lock_free_ring.h"

namespace kvn::service {

// A press of a button or a push of a tilt, or the end of a stroke.
struct SeenPress {
    model::ButtonSlot control = model::ButtonSlot::Left;
    Cause cause = Cause::Function;
    bool isPaused = false;
    model::FunctionCode function = model::kFunctionNone;  // the action; for a press that passes, what Windows does
    model::EtcKey keys{};                                 // of function 37
    std::array<model::StrokeDirection, model::kMaxStrokeLength> stroke{};
    std::uint32_t profile = 0;
};

// The engine's decision about a press that has just begun.
struct DecidedPress {
    model::ButtonSlot control = model::ButtonSlot::Left;
    Verdict verdict = Verdict::Pass;
    bool isPaused = false;
    std::uint32_t profile = 0;
};

class PressFeed {
public:
    // For the hook thread: adds the presses and strokes of the orders. Both reports do nothing while no thread watches,
    // and a press is lost if the ring is full.
    void Report(const Orders& orders);
    // Adds a press that has no order: it passes, or begins a stroke.
    void ReportPress(const DecidedPress& press, const Orders& itsOrders);

    // For the watching thread, one at a time.
    void Watch();  // from now on
    void StopWatching() { isWatched = false; }
    HANDLE Came() const { return came.Get(); }  // an event, set when there is a press; null if creating it failed
    bool Take(SeenPress& press) { return presses.Take(press); }

private:
    void Put(const SeenPress& press);

    std::atomic<bool> isWatched = false;
    LockFreeRing<SeenPress, 64> presses;
    platform::UniqueKernelObject came{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
};

}  // namespace kvn::service

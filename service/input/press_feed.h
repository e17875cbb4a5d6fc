// The user's presses as they happen, for a window that shows them: the hook thread puts in, and the thread that watches
// takes out. Neither waits for the other.
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
    model::FunctionCode function = model::kFunctionNone;  // what is done: of a press that passes, what Windows does
    model::EtcKey keys{};                                 // of function 37
    std::array<model::StrokeDirection, model::kMaxStrokeLength> stroke{};
    std::uint32_t profile = 0;
};

// How the engine has decided about a press that has just begun.
struct DecidedPress {
    model::ButtonSlot control = model::ButtonSlot::Left;
    Verdict verdict = Verdict::Pass;
    bool isPaused = false;
    std::uint32_t profile = 0;
};

class PressFeed {
public:
    // For the hook thread; all of it is nothing while nobody watches. What finds no room is lost.
    // Puts in what the orders say of presses and strokes.
    void Report(const Orders& orders);
    // Puts in a press that has no order of its own: it passes, or begins a stroke.
    void ReportPress(const DecidedPress& press, const Orders& itsOrders);

    // For the thread that watches, one at a time.
    void Watch();  // from now on
    void StopWatching() { isWatched = false; }
    HANDLE Came() const { return came.Get(); }  // an event, signalled when there is something; null when there is none
    bool Take(SeenPress& press) { return presses.Take(press); }

private:
    void Put(const SeenPress& press);

    std::atomic<bool> isWatched = false;
    LockFreeRing<SeenPress, 64> presses;
    platform::UniqueKernelObject came{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
};

}  // namespace kvn::service

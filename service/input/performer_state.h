// The state that the hook thread, the worker and the keeper of one performer share.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <utility>

#include "platform/boundary.h"
#include "platform/unique_resource.h"
#include "service/input/holdings.h"
#include "service/input/lock_free_ring.h"
#include "service/input/performer_outlets.h"
#include "service/input/wake_signal.h"

namespace kvn::service {

// Beyond this, presses are natural.
inline constexpr std::size_t kWorkerOrders = 64;
inline constexpr std::size_t kKeeperOrders = 256;

// Admits one thread at a time, and none after it is closed. It never waits.
class Gate {
public:
    bool Enter() { return Change(State::Open, State::Inside); }
    void Leave() { Change(State::Inside, State::Open); }
    void Close() { state = State::Closed; }

private:
    enum class State : std::uint8_t { Open, Inside, Closed };
    bool Change(State from, State to) { return state.compare_exchange_strong(from, to); }

    std::atomic<State> state = State::Open;
};

// A beginning waits for the ends that were ordered before it, so that an earlier release comes first.
struct WorkerOrder {
    Order order;
    std::uint32_t endingsBefore = 0;
};

// An end waits briefly for the beginnings that were ordered before it, so that a key held by two controls goes up with
// the last.
struct KeeperOrder {
    Order order;
    std::uint32_t workBefore = 0;
};

// Calls an outlet as long as its gate is open.
template <typename Outlet, typename... Arguments>
void CallOutlet(Gate& gate, const Outlet& outlet, const Arguments&... arguments) {
    if (!outlet || !gate.Enter()) return;
    platform::Completes([&] { outlet(arguments...); });
    gate.Leave();
}

struct PerformerState {
    PerformerState(HeldList& heldList, PerformerOutlets chosenOutlets)
        : outlets(std::move(chosenOutlets)), holdings(heldList) {}

    PerformerOutlets outlets;
    Gate workerGate;
    Gate keeperGate;
    Holdings holdings;
    LockFreeRing<WorkerOrder, kWorkerOrders> workerOrders;
    LockFreeRing<KeeperOrder, kKeeperOrders> keeperOrders;
    WakeSignal workerWake;
    WakeSignal keeperWake;
    std::uint32_t workOrdered = 0;  // for the hook thread
    std::atomic<std::uint32_t> workDone = 0;
    WakeSignal workStep;               // for the keeper
    std::uint32_t endingsOrdered = 0;  // for the hook thread
    std::atomic<std::uint32_t> endingsDone = 0;
    WakeSignal endingDone;  // for the worker
    std::atomic<bool> isEnding = false;
    std::atomic<std::uint32_t> busySince = 0;  // tick count at which the worker began its current order; 0: none
    std::atomic<std::uint64_t> actions = 0;
};

}  // namespace kvn::service

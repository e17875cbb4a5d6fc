#include "service/input/performer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/boundary.h"
#include "platform/thread_start.h"
#include "service/input/keeper.h"
#include "service/input/worker.h"

namespace kvn::service {
namespace {

constexpr std::size_t kOrdersOfOneEvent = 16;
// There is room for endings even if a trail fills the rest.
constexpr std::size_t kRoomForEndings = 64;
constexpr std::int32_t kLongestOrder = 3'000;  // milliseconds; a worker that takes longer hangs
constexpr DWORD kLongestFarewell = 900;

bool IsForWorker(OrderKind kind) {
    constexpr std::array kWorkerKinds{OrderKind::Begin, OrderKind::Act, OrderKind::Scroll, OrderKind::Note};
    return std::ranges::find(kWorkerKinds, kind) != kWorkerKinds.end();
}

bool Hangs(const PerformerState& state) {
    const std::uint32_t since = state.busySince;
    return since != 0 && static_cast<std::int32_t>(GetTickCount() - since) > kLongestOrder;
}

}  // namespace

class Performer::Lanes {
public:
    Lanes(HeldList& heldList, Outlets chosenOutlets)
        : state(std::make_shared<PerformerState>(heldList, std::move(chosenOutlets))) {}
    Lanes(const Lanes&) = delete;
    Lanes& operator=(const Lanes&) = delete;
    ~Lanes();

    bool Start();
    bool HasRoom() const;
    void Take(const Orders& orders);
    std::uint64_t ActionCount() const { return state->actions; }

private:
    bool TakeForWorker(const Order& order);
    bool TakeForKeeper(const Order& order);

    std::shared_ptr<PerformerState> state;
    platform::UniqueKernelObject keeper;
    platform::UniqueKernelObject worker;
};

// A thread that hangs is left behind with the state. When it continues, it finds the gates closed.
Performer::Lanes::~Lanes() {
    state->isEnding = true;
    state->keeperWake.Raise();
    state->workerWake.Raise();
    const std::array threads{keeper.Get(), worker.Get()};
    // The worker is started last.
    const DWORD count = worker ? 2 : 1;
    if (keeper) WaitForMultipleObjects(count, threads.data(), TRUE, kLongestFarewell);
    state->workerGate.Close();
    state->keeperGate.Close();
    state->holdings.Close();
}

bool Performer::Lanes::Start() {
    const std::array signals{&state->workerWake, &state->keeperWake, &state->endingDone, &state->workStep};
    if (!std::ranges::all_of(signals, &WakeSignal::IsThere)) return false;
    keeper = platform::StartThread(state, RunKeeper, THREAD_PRIORITY_ABOVE_NORMAL);
    worker = platform::StartThread(state, RunWorker, THREAD_PRIORITY_ABOVE_NORMAL);
    return keeper && worker;
}

bool Performer::Lanes::HasRoom() const {
    return state->workerOrders.Room() >= kOrdersOfOneEvent &&
           state->keeperOrders.Room() >= kRoomForEndings + kOrdersOfOneEvent && !Hangs(*state);
}

void Performer::Lanes::Take(const Orders& orders) {
    bool wakesWorker = false;
    bool wakesKeeper = false;
    for (const Order& order : orders.All()) {
        if (IsForWorker(order.kind)) {
            wakesWorker |= TakeForWorker(order);
        } else {
            wakesKeeper |= TakeForKeeper(order);
        }
    }
    if (wakesKeeper) state->keeperWake.Raise();
    if (wakesWorker) state->workerWake.Raise();
}

bool Performer::Lanes::TakeForWorker(const Order& order) {
    if (!state->workerOrders.Put({order, state->endingsOrdered})) return false;
    ++state->workOrdered;
    return true;
}

bool Performer::Lanes::TakeForKeeper(const Order& order) {
    if (order.kind == OrderKind::StrokeMove && state->keeperOrders.Room() < kRoomForEndings) return false;
    if (!state->keeperOrders.Put({order, state->workOrdered})) return false;
    if (order.kind == OrderKind::End) ++state->endingsOrdered;
    return true;
}

Performer::Performer(HeldList& heldList, Outlets chosenOutlets)
    : lanes(std::make_unique<Lanes>(heldList, std::move(chosenOutlets))) {}

Performer::~Performer() = default;

bool Performer::Start() {
    return lanes->Start();
}

bool Performer::HasRoom() const {
    return lanes->HasRoom();
}

void Performer::Take(const Orders& orders) {
    lanes->Take(orders);
}

std::uint64_t Performer::ActionCount() const {
    return lanes->ActionCount();
}

}  // namespace kvn::service

#include "service/input/worker.h"

#include "platform/boundary.h"
#include "service/input/order_execution.h"

namespace kvn::service {
namespace {

constexpr std::uint32_t kLongestWait = 500;  // milliseconds

void Report(PerformerState& state, const Order& order, const std::wstring& done) {
    if (!state.outlets.onDone || !state.outletGate.Enter()) return;
    platform::Completes([&] { state.outlets.onDone(order, done); });
    state.outletGate.Leave();
}

void CarryOut(PerformerState& state, const Order& order) {
    const std::wstring done = ExecuteOrder(order, state.holdings);
    if (CountsAsAction(order)) ++state.actions;
    if (order.kind == OrderKind::Begin && state.holdings.DoRepeat()) SetEvent(state.keeperWake.Get());
    Report(state, order, done);
}

// The keeper is late only when input cannot be sent at all; then nothing else waits for it.
void AwaitEndings(PerformerState& state, std::uint32_t endings) {
    const std::uint32_t begin = GetTickCount();
    while (static_cast<std::int32_t>(endings - state.endingsDone) > 0) {
        const std::uint32_t waited = GetTickCount() - begin;
        if (waited >= kLongestWait) return;
        state.endingDone.Await(kLongestWait - waited);
    }
}

void CarryOutAll(PerformerState& state) {
    WorkerOrder next;
    while (!state.isEnding && state.workerOrders.Take(next)) {
        state.busySince = GetTickCount() | 1U;
        AwaitEndings(state, next.endingsBefore);
        platform::Completes([&] { CarryOut(state, next.order); });
        state.busySince = 0;
        ++state.workDone;
        state.workStep.Raise();
    }
}

}  // namespace

void RunWorker(PerformerState& state) {
    while (!state.isEnding) {
        state.workerWake.Await(INFINITE);
        CarryOutAll(state);
    }
}

}  // namespace kvn::service

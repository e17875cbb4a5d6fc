#include "service/input/worker.h"

#include "platform/boundary.h"
#include "service/input/deeds.h"

namespace kvn::service {
namespace {

void Report(PerformerState& state, const Order& order, const std::wstring& done) {
    if (!state.outlets.onDone || !state.outletGate.Enter()) return;
    platform::Completes([&] { state.outlets.onDone(order, done); });
    state.outletGate.Leave();
}

void CarryOut(PerformerState& state, const Order& order) {
    const std::wstring done = DoOrder(order, state.holdings);
    if (CountsAsAction(order)) ++state.actions;
    // What has begun may repeat.
    if (order.kind == OrderKind::Begin) SetEvent(state.keeperWake.Get());
    Report(state, order, done);
}

void CarryOutAll(PerformerState& state) {
    Order order;
    while (!state.isEnding && state.workerOrders.Take(order)) {
        state.busySince = GetTickCount() | 1U;
        platform::Completes([&] { CarryOut(state, order); });
        state.busySince = 0;
    }
}

}  // namespace

void RunWorker(PerformerState& state) {
    while (!state.isEnding) {
        WaitForSingleObject(state.workerWake.Get(), INFINITE);
        CarryOutAll(state);
    }
}

}  // namespace kvn::service

#include "service/input/worker.h"

#include "platform/boundary.h"
#include "service/input/order_execution.h"

namespace kvn::service {
namespace {

constexpr std::uint32_t kLongestWait = 500;  // milliseconds
// The first repeat is due at least a hundred milliseconds after its beginning. The keeper is woken a little late, so
// that it does not take the processor from the program that gets the key.
constexpr DWORD kRepeatNotice = 20;

struct Worker {
    PerformerState& state;
    bool hasNewRepeat = false;  // something repeats, and the keeper may not know
};

void CarryOut(Worker& worker, const Order& order) {
    PerformerState& state = worker.state;
    const std::wstring done = ExecuteOrder(order, state.holdings);
    if (CountsAsAction(order)) ++state.actions;
    worker.hasNewRepeat = order.kind == OrderKind::Begin && state.holdings.DoRepeat();
    CallOutlet(state.workerGate, state.outlets.onDone, order, done);
}

// If the repeat has ended in the meantime, the keeper is not needed.
void NoticeRepeat(Worker& worker) {
    if (worker.hasNewRepeat && worker.state.holdings.DoRepeat()) worker.state.keeperWake.Raise();
    worker.hasNewRepeat = false;
}

// The keeper is late only if no input can be sent at all, and then the worker does not wait any longer.
void AwaitEndings(PerformerState& state, std::uint32_t endings) {
    const std::uint32_t begin = GetTickCount();
    while (static_cast<std::int32_t>(endings - state.endingsDone) > 0) {
        const std::uint32_t waited = GetTickCount() - begin;
        if (waited >= kLongestWait) return;
        state.endingDone.Await(kLongestWait - waited);
    }
}

void CarryOutAll(Worker& worker) {
    PerformerState& state = worker.state;
    WorkerOrder next;
    while (!state.isEnding && state.workerOrders.Take(next)) {
        NoticeRepeat(worker);
        state.busySince = GetTickCount() | 1U;
        AwaitEndings(state, next.endingsBefore);
        platform::Completes([&] { CarryOut(worker, next.order); });
        state.busySince = 0;
        ++state.workDone;
        state.workStep.Raise();
    }
}

}  // namespace

void RunWorker(PerformerState& state) {
    Worker worker{state};
    while (!state.isEnding) {
        state.workerWake.Await(worker.hasNewRepeat ? kRepeatNotice : INFINITE);
        NoticeRepeat(worker);
        CarryOutAll(worker);
    }
}

}  // namespace kvn::service

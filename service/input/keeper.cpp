#include "service/input/keeper.h"

#include <algorithm>
#include <array>

#include "platform/boundary.h"
#include "service/input/flying_notches.h"

namespace kvn::service {
namespace {

struct Keeper {
    PerformerState& state;
    FlyingNotches flying;
};

constexpr std::uint32_t kLongestWait = 100;  // milliseconds

// A worker that is busy for longer does not delay a release.
void AwaitWork(PerformerState& state, std::uint32_t work) {
    const std::uint32_t begin = GetTickCount();
    while (static_cast<std::int32_t>(work - state.workDone) > 0) {
        const std::uint32_t since = state.busySince;
        const std::uint32_t waited = GetTickCount() - (since == 0 ? begin : std::min(begin, since));
        if (waited >= kLongestWait) return;
        state.workStep.Await(kLongestWait - waited);
    }
}

void EndHolding(Keeper& keeper, const Order& order) {
    keeper.state.holdings.End(order.ticket, order.passedButtons);
    ++keeper.state.endingsDone;
    keeper.state.endingDone.Raise();
}

void Stroke(Keeper& keeper, const Order& order) {
    CallOutlet(keeper.state.keeperGate, keeper.state.outlets.onStroke, order);
}

void BeginFlying(Keeper& keeper, const Order& order) {
    keeper.flying.Begin(order.amount, GetTickCount());
}

void EndFlying(Keeper& keeper, const Order& /*order*/) {
    keeper.flying.End();
}

struct KeeperRow {
    OrderKind kind;
    void (*carryOut)(Keeper&, const Order&);
};

constexpr std::array<KeeperRow, 6> kKeeperOrderTable{{
    {OrderKind::End, EndHolding},
    {OrderKind::StrokeBegin, Stroke},
    {OrderKind::StrokeMove, Stroke},
    {OrderKind::StrokeEnd, Stroke},
    {OrderKind::FlyBegin, BeginFlying},
    {OrderKind::FlyEnd, EndFlying},
}};

void CarryOutAll(Keeper& keeper) {
    KeeperOrder next;
    while (keeper.state.keeperOrders.Take(next)) {
        const auto row = std::ranges::find(kKeeperOrderTable, next.order.kind, &KeeperRow::kind);
        if (row == kKeeperOrderTable.end()) continue;
        if (next.order.kind == OrderKind::End) AwaitWork(keeper.state, next.workBefore);
        platform::Completes([&] { row->carryOut(keeper, next.order); });
    }
}

// Does what is due, and returns the time until something else is.
DWORD Continue(Keeper& keeper) {
    const std::uint32_t now = GetTickCount();
    const auto repeat = keeper.state.holdings.Repeat(now);
    const auto notch = keeper.flying.Continue(now);
    return std::min(repeat.value_or(INFINITE), notch.value_or(INFINITE));
}

}  // namespace

void RunKeeper(PerformerState& state) {
    Keeper keeper{state, {}};
    while (!state.isEnding) {
        CarryOutAll(keeper);
        state.keeperWake.Await(Continue(keeper));
    }
    CarryOutAll(keeper);
    state.holdings.Close();
}

}  // namespace kvn::service

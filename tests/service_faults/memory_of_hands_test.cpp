// The worker, the keeper and the hook's thread without memory.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>

#include "service/input/hook_loop.h"
#include "service/input/hook_thread.h"
#include "service/input/performer.h"
#include "tests/service_faults/refused_memory.h"
#include "tests/support/function_codes.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using model::ButtonSlot;
using service::Order;
using service::OrderKind;

constexpr service::Ticket kLast = 9;

class MemoryOfHandsTest : public testing::Test {
protected:
    MemoryOfHandsTest() { EXPECT_TRUE(performer.Start()); }

    void Take(OrderKind kind, model::FunctionCode function, service::Ticket ticket = 0) {
        Order order;
        order.kind = kind;
        order.function = function;
        order.ticket = ticket;
        order.keys = {{VK_LCONTROL, 'V', -2}};
        service::Orders orders;
        orders.Add(order);
        performer.Take(orders);
    }
    bool IsNothingHeld() const {
        return std::ranges::all_of(held.counts, [](const auto& count) { return count == 0; });
    }
    // Something of every kind; the last key shows that all of it was tried.
    void DoEverything() {
        Take(OrderKind::Note, kOff);
        Take(OrderKind::Act, kCopy);
        Take(OrderKind::Act, kCloseWindow);
        Take(OrderKind::Scroll, kScrollLeft);
        Take(OrderKind::Begin, kShift, 1);
        Take(OrderKind::Begin, kKeys, 2);
        Take(OrderKind::StrokeBegin, 0);
        Take(OrderKind::End, 0, 1);
        Take(OrderKind::End, 0, 2);
        // No other order presses this key.
        Take(OrderKind::Begin, kAlt, kLast);
        Await("the last key", [&] { return held.counts[VK_LMENU] != 0; });
        Take(OrderKind::StrokeEnd, 0);
        Take(OrderKind::End, 0, kLast);
        Await("all releases", [&] { return IsNothingHeld(); });
    }

    service::HeldList held;
    std::atomic<int> done = 0;
    service::Performer performer{
        held,
        {.onDone = [this](const Order&,
                          const std::wstring& text) { done += std::wstring(text + L"!").empty() ? 0 : 1; },
         .onStroke = [](const Order&) { std::make_unique<Order>().reset(); }}};
};

TEST_F(MemoryOfHandsTest, WorkerAndKeeperReleaseEverythingAndGoOn) {
    SweepRefusals(
        Whose::Others, 1, [&] { DoEverything(); },
        [&](int number) {
            SCOPED_TRACE(number);
            EXPECT_TRUE(IsNothingHeld());
            EXPECT_GE(GetAsyncKeyState(VK_LSHIFT), 0);
            EXPECT_GE(GetAsyncKeyState('V'), 0);
            const int before = done;
            Take(OrderKind::Note, kOff);
            EXPECT_TRUE(ComesTrue([&] { return done > before; }));
        });
}

TEST_F(MemoryOfHandsTest, TheHookDecidesAsEver) {
    service::MouseActivity activity;
    service::HookLoop loop(performer, activity);
    service::EngineSettings settings;
    settings.functions[ButtonSlot::Center] = kShift;
    loop.Send(settings);
    MSLLHOOKSTRUCT details{};
    RefusedMemory::RefuseFrom(Whose::This, 1);
    const bool isPressKept = loop.Keeps(WM_MBUTTONDOWN, details);
    const bool isReleaseKept = loop.Keeps(WM_MBUTTONUP, details);
    const bool isOtherKept = loop.Keeps(WM_RBUTTONDOWN, details) || loop.Keeps(WM_RBUTTONUP, details);
    EXPECT_FALSE(RefusedMemory::StopRefusing());
    EXPECT_TRUE(isPressKept);
    EXPECT_TRUE(isReleaseKept);
    EXPECT_FALSE(isOtherKept);
    EXPECT_TRUE(ComesTrue([&] { return IsNothingHeld(); }));
}

// The thread may come up without a hook, or not at all; then the mouse is as without the service.
TEST_F(MemoryOfHandsTest, AHookThreadThatCannotStartLeavesNothingBehind) {
    service::MouseActivity activity;
    for (const Whose whose : {Whose::This, Whose::Others}) {
        SweepRefusals(
            whose, 1,
            [&] {
                try {
                    service::HookThread hook(performer, activity);
                    hook.Start();
                    hook.Use({});
                    hook.GestureEditBegin();
                } catch (const std::bad_alloc&) {
                }
            },
            [&](int number) {
                SCOPED_TRACE(number);
                service::HookThread hook(performer, activity);
                EXPECT_TRUE(hook.Start());
            });
    }
}

}  // namespace
}  // namespace kvn::test

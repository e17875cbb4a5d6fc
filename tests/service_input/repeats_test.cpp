#include "tests/service_input/performer_fixture.h"
#include "tests/support/real_input.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using service::Order;
using service::OrderKind;

class RepeatsTest : public PerformerTest {
protected:
    void BeginScrolling(model::FunctionCode function, std::int32_t speed) {
        Order order;
        order.kind = OrderKind::Begin;
        order.function = function;
        order.ticket = 1;
        order.horizontalSpeed = speed;
        Take(order);
    }
};

TEST_F(RepeatsTest, AHeldKeyGoesDownAgainAndUpOnce) {
    Begin(1, kDelete);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("+Delete") >= 4; }));
    End(1);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("-Delete") == 1; }));
    EXPECT_TRUE(recorder.Text().ends_with("+Delete -Delete"));
}

TEST_F(RepeatsTest, OnlyTheLastKeyThatIsNoModifierRepeats) {
    Begin(1, kKeys, {{VK_LCONTROL, 'A', 'B'}});
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("+B") >= 3; }));
    End(1);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("-Ctrl") == 1; }));
    EXPECT_EQ(recorder.Count("+Ctrl"), 1U);
    EXPECT_EQ(recorder.Count("+A"), 1U);
}

TEST_F(RepeatsTest, AModifierThatTheUserReleasesIsPressedForEachRepeat) {
    UserHolds(VK_LCONTROL);
    Begin(1, kKeys, {{VK_LCONTROL, 'A', model::kNoKey}});
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("+A") >= 1; }));
    LetGoOfKey(VK_LCONTROL);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Text().ends_with("+Ctrl +A -Ctrl +Ctrl +A -Ctrl"); }))
        << recorder.Text();
    End(1);
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

TEST_F(RepeatsTest, ModifiersAreMerelyHeld) {
    Begin(1, kShift);
    Begin(2, kKeys, {{VK_LCONTROL, VK_LMENU, model::kNoKey}});
    Begin(3, kDelete);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("+Delete") >= 3; }));
    EXPECT_EQ(recorder.Count("+Shift") + recorder.Count("+Ctrl") + recorder.Count("+Alt"), 3U);
    End(3);
    End(2);
    End(1);
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

TEST_F(RepeatsTest, AButtonScrollsFromThePressOnUntilTheRelease) {
    BeginScrolling(kScrollRight, 2);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("HWheel60") >= 4; }));
    End(1);
    Act(kShift);  // both go the same way
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("-Shift") == 1; }));
}

TEST_F(RepeatsTest, ScrollingToTheLeftIsNegative) {
    BeginScrolling(kScrollLeft, 4);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("HWheel-120") >= 2; }));
    End(1);
}

TEST_F(RepeatsTest, TheFlyingWheelTurnsUntilItIsStopped) {
    Take(OrderKind::FlyBegin, -40);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("Wheel-120") >= 5; }));
    Take(OrderKind::FlyEnd);
    EXPECT_EQ(recorder.Count("Wheel120"), 0U);
}

TEST_F(RepeatsTest, TheFlyingWheelRunsDownByItself) {
    Take(OrderKind::FlyBegin, 3);
    EXPECT_TRUE(ComesTrue([&] { return recorder.Count("Wheel120") >= 1; }));
}

}  // namespace
}  // namespace kvn::test

// Pushes of the tilts.
#include "tests/service_engine/engine_fixture.h"

namespace kvn::service {
namespace {

class TiltsTest : public EngineTest {
protected:
    bool TiltAfter(std::uint32_t gap, std::int32_t delta) {
        now += gap - 10;
        return Tilt(delta);
    }
};

TEST_F(TiltsTest, AFunctionThatActsOnceActsOnceInAPush) {
    Assign(TiltRight, kCopy);
    EXPECT_TRUE(Tilt(120));
    EXPECT_TRUE(Tilt(120));
    EXPECT_TRUE(Tilt(30));
    EXPECT_EQ(Done(), "Act TiltRight 10");
}

TEST_F(TiltsTest, AHeldFunctionActsOnceInAPush) {
    Assign(TiltLeft, kShift);
    EXPECT_TRUE(Tilt(-120));
    EXPECT_TRUE(Tilt(-120));
    EXPECT_EQ(Done(), "Act TiltLeft 19");
}

TEST_F(TiltsTest, AGapOf300MillisecondsBeginsANewPush) {
    Assign(TiltRight, kCopy);
    Tilt(120);
    TiltAfter(299, 120);
    TiltAfter(299, 120);
    EXPECT_EQ(Done(), "Act TiltRight 10");
    TiltAfter(300, 120);
    EXPECT_EQ(Done(), "Act TiltRight 10");
}

TEST_F(TiltsTest, TheOtherDirectionBeginsANewPush) {
    Assign(TiltRight, kCopy);
    Assign(TiltLeft, kShift);
    Tilt(120);
    Tilt(-120);
    Tilt(120);
    EXPECT_EQ(Done(), "Act TiltRight 10; Act TiltLeft 19; Act TiltRight 10");
}

TEST_F(TiltsTest, AKeyThatRepeatsIsPressedAtEachFullNotch) {
    Assign(TiltRight, kEnter);
    Tilt(120);
    Tilt(100);
    Tilt(20);
    Tilt(240);
    EXPECT_EQ(Done(), "Act TiltRight 16; Act TiltRight 16 again; Act TiltRight 16 again; Act TiltRight 16 again");
}

TEST_F(TiltsTest, AFirstReportBelowANotchIsNoted) {
    Assign(TiltRight, kEnter);
    EXPECT_TRUE(Tilt(60));
    EXPECT_EQ(Done(), "Note TiltRight 16");
    EXPECT_TRUE(Tilt(59));
    EXPECT_EQ(Done(), "");
    EXPECT_TRUE(Tilt(1));
    EXPECT_EQ(Done(), "Act TiltRight 16 again");
}

TEST_F(TiltsTest, TheSumOfAPushIsForgottenWithIt) {
    Assign(TiltRight, kEnter);
    Tilt(119);
    TiltAfter(300, 1);
    EXPECT_EQ(Done(), "Note TiltRight 16; Note TiltRight 16");
}

TEST_F(TiltsTest, AHugeReportPressesNoMoreThanEightTimes) {
    Assign(TiltRight, kEnter);
    Tilt(2'000'000'000);
    Orders orders;
    engine.OnMouse(WheelEvent(MouseEventKind::Tilt, 120 * 9), orders);
    EXPECT_EQ(orders.All().size(), 8U);
}

TEST_F(TiltsTest, AScrollIsItsReportTimesAQuarterOfTheSpeed) {
    settings.horizontalSpeed = 6;
    Apply();
    EXPECT_TRUE(Tilt(120));
    EXPECT_TRUE(Tilt(40));
    EXPECT_TRUE(TiltAfter(300, -120));
    EXPECT_EQ(Done(), "Scroll TiltRight 34 by 180; Scroll TiltRight 34 by 60 again; Scroll TiltLeft 33 by -180");
}

TEST_F(TiltsTest, TheRemainderOfAScrollIsKeptWithinThePush) {
    settings.horizontalSpeed = 1;
    Apply();
    Tilt(3);
    Tilt(3);
    Tilt(1);
    Tilt(1);
    EXPECT_EQ(Done(), "Note TiltRight 34; Scroll TiltRight 34 by 1 again; Scroll TiltRight 34 by 1 again");
    TiltAfter(300, 3);
    EXPECT_EQ(Done(), "Note TiltRight 34");
}

TEST_F(TiltsTest, TheFunctionDecidesTheDirectionOfAScroll) {
    Assign(TiltLeft, kScrollRight);
    Assign(TiltRight, kScrollLeft);
    Tilt(-120);
    Tilt(120);
    EXPECT_EQ(Done(), "Scroll TiltLeft 34 by 120; Scroll TiltRight 33 by -120");
}

TEST_F(TiltsTest, OffKeepsEveryReportAndNotesThePush) {
    Assign(TiltRight, kOff);
    EXPECT_TRUE(Tilt(120));
    EXPECT_TRUE(Tilt(120));
    EXPECT_EQ(Done(), "Note TiltRight 38");
}

TEST_F(TiltsTest, SettingsThatChangeWithinAPushDoNotLetItActAgain) {
    Assign(TiltRight, kCopy);
    Tilt(120);
    Assign(TiltRight, 11);
    EXPECT_TRUE(Tilt(120));
    Assign(TiltRight, kCopy);
    EXPECT_TRUE(Tilt(120));
    EXPECT_EQ(Done(), "Act TiltRight 10");
    TiltAfter(300, 120);
    EXPECT_EQ(Done(), "Act TiltRight 10");
}

TEST_F(TiltsTest, AKeyThatRepeatsStopsWhenTheTiltGetsAnotherFunction) {
    Assign(TiltRight, kEnter);
    Tilt(120);
    Assign(TiltRight, 17);
    EXPECT_TRUE(Tilt(120));
    EXPECT_EQ(Done(), "Act TiltRight 16");
}

TEST_F(TiltsTest, APushThatPassedGoesOnPassing) {
    EXPECT_FALSE(Tilt(120));
    Assign(TiltRight, kCopy);
    EXPECT_FALSE(Tilt(120));
    EXPECT_EQ(Done(), "");
    EXPECT_TRUE(TiltAfter(300, 120));
}

TEST_F(TiltsTest, AnotherSpeedCountsWithinThePush) {
    settings.horizontalSpeed = 8;
    Apply();
    Tilt(120);
    settings.horizontalSpeed = 4;
    Apply();
    EXPECT_TRUE(Tilt(120));
    EXPECT_EQ(Done(), "Scroll TiltRight 34 by 240; Scroll TiltRight 34 by 120 again");
}

TEST_F(TiltsTest, APauseEndsTheFunctionOfAPush) {
    Assign(TiltRight, kEnter);
    Tilt(120);
    Pause(true);
    EXPECT_TRUE(Tilt(120));
    Pause(false);
    EXPECT_TRUE(Tilt(120));
    EXPECT_EQ(Done(), "Act TiltRight 16");
    EXPECT_TRUE(TiltAfter(300, 120));
    EXPECT_EQ(Done(), "Act TiltRight 16");
}

TEST_F(TiltsTest, APushGoesOnWhenTheClockWrapsAround) {
    Assign(TiltRight, kCopy);
    now = 0xFFFF'FFF0;
    Tilt(120);
    TiltAfter(200, 120);
    EXPECT_EQ(Done(), "Act TiltRight 10");
    TiltAfter(300, 120);
    EXPECT_EQ(Done(), "Act TiltRight 10");
}

TEST_F(TiltsTest, APushIsNotResumedAfterTheClockWrapsAround) {
    Assign(TiltRight, kCopy);
    Tilt(120);
    now += 0x8000'0000;
    Keeps(Event(MouseEventKind::Move));
    now += 0x8000'0000;
    Tilt(120);
    EXPECT_EQ(Done(), "Act TiltRight 10; Act TiltRight 10");
}

}  // namespace
}  // namespace kvn::service

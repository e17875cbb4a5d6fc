// Flying scroll: which flicks make the wheel fly, and what stops it.
#include <optional>

#include "service/engine/flying_curve.h"
#include "tests/service_engine/engine_fixture.h"

namespace kvn::service {
namespace {

class FlyingScrollTest : public EngineTest {
protected:
    FlyingScrollTest() { TurnOn(1); }

    void TurnOn(std::int32_t flicks) {
        settings.flying.flicks = flicks;
        Apply();
    }
    // Turns the wheel by notches, this many milliseconds apart and after the previous event.
    void Turn(int notches, std::uint32_t gap = 10, std::int32_t delta = 120) {
        for (int notch = 0; notch < notches; ++notch) {
            now += gap - 10;
            EXPECT_FALSE(Wheel(delta));
        }
    }
    void Fly() {
        Turn(6);
        EXPECT_EQ(Done(), "FlyBegin 40");
    }
};

TEST_F(FlyingScrollTest, SixNotchesMakeItFly) {
    Turn(5);
    EXPECT_EQ(Done(), "");
    Turn(1);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, TowardsTheUserIsNegative) {
    Turn(6, 10, -120);
    EXPECT_EQ(Done(), "FlyBegin -40");
}

TEST_F(FlyingScrollTest, EightNotchesASecondForEachStepOfSpeed) {
    settings.flying.scrollSpeed = 10;
    Apply();
    Turn(6);
    EXPECT_EQ(Done(), "FlyBegin 80");
}

TEST_F(FlyingScrollTest, SpeedsOutOfRangeCountAsFive) {
    settings.flying.scrollSpeed = 11;
    settings.flying.revolutionSpeed = 0;
    Apply();
    Turn(6, 60);
    EXPECT_EQ(Done(), "FlyBegin 40");
    Keeps(ButtonEvent(MouseEventKind::Press, Left));
    Done();
    Turn(12, 61);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, TheGapDependsOnTheRevolutionSpeed) {
    settings.flying.revolutionSpeed = 10;
    Apply();
    Turn(12, 31);
    EXPECT_EQ(Done(), "");
    Turn(6, 30);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, OneToFiveRevolutionsTurnItOn) {
    for (const std::int32_t flicks : {-2, -1, 0, 6, 54}) {
        TurnOn(flicks);
        Turn(60);
        EXPECT_EQ(Done(), "") << flicks;
    }
}

TEST_F(FlyingScrollTest, TheChosenNumberOfFlicksIsNeeded) {
    TurnOn(3);
    Turn(6);
    Turn(1, 400);
    Turn(5);
    EXPECT_EQ(Done(), "");
    Turn(1, 400);
    Turn(4);
    EXPECT_EQ(Done(), "");
    Turn(1);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, AFlickThatComesTooLateIsTheFirstOne) {
    TurnOn(2);
    Turn(6);
    Turn(1, 401);
    Turn(5);
    EXPECT_EQ(Done(), "");
    Turn(1, 400);
    Turn(5);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, OneLongFlickIsOne) {
    TurnOn(2);
    Turn(30);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, ItFliesFromTheSixthNotchOfAFlickOrNotAtAll) {
    TurnOn(2);
    Turn(7);
    TurnOn(1);
    Turn(20);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, NotchesBetweenTwoFlicksDoNotPartThem) {
    TurnOn(2);
    Turn(6);
    Turn(1, 100);
    Turn(1, 100);
    Turn(1, 200);
    Turn(5);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, TheTimeToTheNextFlickRunsFromTheOneBefore) {
    TurnOn(2);
    Turn(6);
    Turn(1, 300);
    Turn(1, 101);
    Turn(5);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, AnotherDirectionBeginsFromNothing) {
    Turn(5);
    Turn(1, 10, -120);
    Turn(5);
    EXPECT_EQ(Done(), "");
    TurnOn(2);
    Turn(1);
    Turn(6, 10, -120);
    Turn(1, 100);
    Turn(5);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, FinerReportsAddUpToNotches) {
    Turn(23, 10, 30);
    EXPECT_EQ(Done(), "");
    Turn(1, 10, 30);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, FinerReportsInTheOtherDirectionBeginFromNothing) {
    Turn(5);
    Turn(1, 10, 90);
    Turn(1, 10, -30);
    Turn(1, 10, 90);
    EXPECT_EQ(Done(), "");
    Turn(1, 10, 30);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, ALargeReportIsSeveralNotches) {
    Turn(1, 10, 720);
    EXPECT_EQ(Done(), "FlyBegin 40");
    Turn(1, 10, -2'000'000'000);
    EXPECT_EQ(Done(), "FlyEnd; FlyBegin -40");
}

TEST_F(FlyingScrollTest, NotchesInTheSameDirectionChangeNothing) {
    Fly();
    Turn(30);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, EveryButtonStopsIt) {
    Assign(Button4, kCopy);
    Fly();
    Press(Left);
    EXPECT_EQ(Done(), "FlyEnd");
    Fly();
    Press(Button4);
    EXPECT_EQ(Done(), "FlyEnd; Act Button4 10");
}

TEST_F(FlyingScrollTest, AReleaseDoesNotStopIt) {
    Press(Left);
    Fly();
    Release(Left);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, ATiltStopsIt) {
    Fly();
    Tilt(-40);
    EXPECT_EQ(Done(), "FlyEnd");
}

TEST_F(FlyingScrollTest, ANotchInTheOtherDirectionStopsIt) {
    Fly();
    Turn(1, 10, -119);
    EXPECT_EQ(Done(), "");
    Turn(1, 10, -1);
    EXPECT_EQ(Done(), "FlyEnd");
}

TEST_F(FlyingScrollTest, AnotherWindowStopsIt) {
    Fly();
    ShowWindow();
    EXPECT_EQ(Done(), "FlyEnd");
    ShowWindow();
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, APauseStopsIt) {
    Fly();
    Pause(true);
    EXPECT_EQ(Done(), "FlyEnd");
    Turn(12);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, LeavingTheSessionStopsIt) {
    Fly();
    LeaveSession();
    EXPECT_EQ(Done(), "FlyEnd");
}

TEST_F(FlyingScrollTest, SettingsThatTurnItOffStopIt) {
    Fly();
    settings.flying.scrollSpeed = 9;
    Apply();
    EXPECT_EQ(Done(), "");
    TurnOn(0);
    EXPECT_EQ(Done(), "FlyEnd");
}

TEST_F(FlyingScrollTest, InjectedInputNeitherStopsNorStartsIt) {
    Fly();
    MouseEvent wheel = WheelEvent(MouseEventKind::Wheel, -120);
    wheel.isInjected = true;
    Keeps(wheel);
    MouseEvent press = ButtonEvent(MouseEventKind::Press, Left);
    press.isInjected = true;
    Keeps(press);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, ItBeginsAgainAfterItsEnd) {
    Fly();
    now += FlightTime(40) - 10 - 1;
    Turn(1);
    Turn(5);
    EXPECT_EQ(Done(), "");
    Turn(1);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST_F(FlyingScrollTest, AFlightThatIsOverNeedsNoEnd) {
    Fly();
    now += FlightTime(40);
    Press(Left);
    EXPECT_EQ(Done(), "");
}

TEST_F(FlyingScrollTest, ItFliesWhenTheClockWrapsAround) {
    now = 0xFFFF'FFE0;
    Turn(6);
    EXPECT_EQ(Done(), "FlyBegin 40");
}

TEST(FlyingCurveTest, TheFirstNotchComesAfterTheFirstRatesTime) {
    EXPECT_NEAR(*TimeOfNotch(1, 80), 12, 1);
    EXPECT_NEAR(*TimeOfNotch(1, 40), 25, 1);
}

TEST(FlyingCurveTest, TheRateHalvesEverySevenTenthsOfASecond) {
    for (const std::int32_t rate : {8, 40, 80}) {
        // The area below a curve that halves: rate / ln 2 * 0.7 s * (1 - 1/2).
        const double inFirstHalving = rate * 0.7 / 0.693147 / 2;
        const auto last = static_cast<std::int32_t>(inFirstHalving);
        EXPECT_LE(*TimeOfNotch(last, rate), 700U) << rate;
        EXPECT_GT(*TimeOfNotch(last + 1, rate), 700U) << rate;
    }
}

TEST(FlyingCurveTest, ItEndsWhenFewerThanTwoASecondAreLeft) {
    for (std::int32_t rate = 8; rate <= 80; rate += 8) {
        std::uint32_t before = 0;
        std::int32_t n = 1;
        while (const auto due = TimeOfNotch(n, rate)) {
            ASSERT_GE(*due, before);
            before = *due;
            ++n;
        }
        EXPECT_GE(FlightTime(rate), before);
        EXPECT_LT(FlightTime(rate), before + 500);  // the next one would be due at most half a second later
    }
    EXPECT_EQ(FlightTime(8), 1400U);
    EXPECT_EQ(FlightTime(64), 3500U);
}

TEST(FlyingCurveTest, AFlightWithoutSpeedHasNoNotches) {
    EXPECT_EQ(TimeOfNotch(1, 2), std::nullopt);
    EXPECT_EQ(TimeOfNotch(1, 0), std::nullopt);
    EXPECT_EQ(TimeOfNotch(0, 40), std::nullopt);
    EXPECT_EQ(FlightTime(0), 0U);
}

}  // namespace
}  // namespace kvn::service

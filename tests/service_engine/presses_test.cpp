// Presses and their releases, whatever changes in between.
#include "tests/service_engine/engine_fixture.h"

namespace kvn::service {
namespace {

class PressesTest : public EngineTest {};

TEST_F(PressesTest, AHeldFunctionBeginsAtThePressAndEndsAtTheRelease) {
    Assign(Button4, kShift);
    EXPECT_TRUE(Press(Button4));
    EXPECT_EQ(Done(), "Begin Button4 19 #1");
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "End Button4 19 #1");
}

TEST_F(PressesTest, AKeyThatRepeatsBeginsAndEndsToo) {
    Assign(Button4, kEnter);
    Press(Button4);
    Release(Button4);
    EXPECT_EQ(Done(), "Begin Button4 16 #1; End Button4 16 #1");
}

TEST_F(PressesTest, AFunctionThatActsOnceActsAtThePress) {
    Assign(Button4, kCopy);
    EXPECT_TRUE(Press(Button4));
    EXPECT_EQ(Done(), "Act Button4 10");
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, OffKeepsPressAndReleaseAndNotesThem) {
    Assign(Button4, kOff);
    EXPECT_TRUE(Press(Button4));
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "Note Button4 38");
}

TEST_F(PressesTest, EveryBeginningHasItsOwnTicket) {
    Assign(Button4, kShift);
    Assign(Button5, kShift);
    Press(Button4);
    Press(Button5);
    Release(Button4);
    Press(Button4);
    EXPECT_EQ(Done(), "Begin Button4 19 #1; Begin Button5 19 #2; End Button4 19 #1; Begin Button4 19 #3");
}

TEST_F(PressesTest, AnOrderHasEverythingThatTheLogAndTheHandsNeed) {
    settings.horizontalSpeed = 7;
    Assign(Button4, kKeys, {{162, 'V', model::kNoKey}});
    UseProfile(9);
    Press(Button4);
    EXPECT_TRUE(last.isOfPress);
    EXPECT_EQ(last.cause, Cause::Function);
    EXPECT_EQ(last.controlFunction, kKeys);
    EXPECT_EQ(last.keys.codes, (std::array<model::KeyCode, 3>{162, 'V', model::kNoKey}));
    EXPECT_EQ(last.horizontalSpeed, 7);
    EXPECT_EQ(last.profile, 9U);
}

TEST_F(PressesTest, OnlyChosenKeysTravelWithAnOrder) {
    Assign(Button4, kCopy, {{'A', 'B', 'C'}});
    Press(Button4);
    EXPECT_EQ(last.keys, model::EtcKey{});
}

TEST_F(PressesTest, AScrollOnAButtonBegins) {
    settings.horizontalSpeed = 8;
    Assign(Button4, kScrollRight);
    Press(Button4);
    Release(Button4);
    EXPECT_EQ(Done(), "Begin Button4 34 #1; End Button4 34 #1");
    EXPECT_EQ(last.horizontalSpeed, 8);
}

TEST_F(PressesTest, InjectedEventsPassAndChangeNothing) {
    Assign(Button4, kShift);
    MouseEvent press = ButtonEvent(MouseEventKind::Press, Button4);
    press.isInjected = true;
    EXPECT_FALSE(Keeps(press));
    EXPECT_EQ(engine.HeldButtons(), 0U);
    EXPECT_EQ(engine.PressCount(), 0U);
    EXPECT_TRUE(Press(Button4));
    MouseEvent release = ButtonEvent(MouseEventKind::Release, Button4);
    release.isInjected = true;
    EXPECT_FALSE(Keeps(release));
    EXPECT_EQ(Done(), "Begin Button4 19 #1");
    EXPECT_TRUE(Release(Button4));
}

TEST_F(PressesTest, AReleaseWithoutAPressPasses) {
    Assign(Button4, kShift);
    EXPECT_FALSE(Release(Button4));
    Press(Button4);
    Release(Button4);
    Done();
    EXPECT_FALSE(Release(Button4));
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, ASecondPressEndsTheFirstOneFirst) {
    Assign(Button4, kShift);
    Press(Button4);
    EXPECT_TRUE(Press(Button4));
    EXPECT_EQ(Done(), "Begin Button4 19 #1; End Button4 19 #1; Begin Button4 19 #2");
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "End Button4 19 #2");
}

TEST_F(PressesTest, AnotherFunctionEndsTheOneThatIsHeld) {
    Assign(Button4, kShift);
    Press(Button4);
    Done();
    Assign(Button4, kCtrl);
    EXPECT_EQ(Done(), "End Button4 19 #1");
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, AFunctionThatComesBackDoesNotBeginAgain) {
    Assign(Button4, kShift);
    Press(Button4);
    Assign(Button4, kCtrl);
    Assign(Button4, kShift);
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "Begin Button4 19 #1; End Button4 19 #1");
}

TEST_F(PressesTest, OtherKeysAreAnotherFunction) {
    Assign(Button4, kKeys, {{'A', model::kNoKey, model::kNoKey}});
    Press(Button4);
    Done();
    Assign(Button4, kKeys, {{'B', model::kNoKey, model::kNoKey}});
    EXPECT_EQ(Done(), "End Button4 37 #1");
}

TEST_F(PressesTest, KeysThatTheFunctionDoesNotUseDoNotMakeItAnother) {
    Assign(Button4, kShift, {{'A', model::kNoKey, model::kNoKey}});
    Press(Button4);
    Done();
    Assign(Button4, kShift);
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, AnotherProfileWithTheSameFunctionEndsNothing) {
    Assign(Button4, kShift);
    Press(Button4);
    UseProfile(2);
    EXPECT_EQ(Done(), "Begin Button4 19 #1");
    Release(Button4);
    EXPECT_EQ(Done(), "End Button4 19 #1");
    EXPECT_EQ(last.profile, 1U);
}

TEST_F(PressesTest, LosingTheLastLeftClickEndsWhatTheLeftButtonHolds) {
    Assign(Right, 1);
    Assign(Left, kShift);
    Press(Left);
    Done();
    Assign(Right, 2);
    EXPECT_EQ(Done(), "End Left 19 #1");
    EXPECT_TRUE(Release(Left));
    EXPECT_FALSE(Press(Left));
}

TEST_F(PressesTest, APressThatPassedHasAReleaseThatPasses) {
    EXPECT_FALSE(Press(Center));
    Assign(Center, kShift);
    EXPECT_FALSE(Release(Center));
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, APressThatWasKeptHasAReleaseThatIsKept) {
    Assign(Center, kShift);
    EXPECT_TRUE(Press(Center));
    Assign(Center, 9);
    EXPECT_TRUE(Release(Center));
}

TEST_F(PressesTest, APauseEndsEverythingAndKeepsTheReleases) {
    Assign(Button4, kShift);
    Assign(Button5, kEnter);
    Press(Button4);
    Press(Button5);
    Done();
    Pause(true);
    EXPECT_EQ(Done(), "End Button4 19 #1; End Button5 16 #2");
    EXPECT_TRUE(Release(Button4));
    Pause(false);
    EXPECT_TRUE(Release(Button5));
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, WhilePausedEverythingIsNatural) {
    Assign(Button4, kShift);
    Assign(TiltLeft, kCopy);
    Pause(true);
    EXPECT_FALSE(Press(Button4));
    EXPECT_FALSE(Tilt(-120));
    Pause(false);
    EXPECT_FALSE(Release(Button4));
    EXPECT_EQ(Done(), "");
    EXPECT_TRUE(Press(Button4));
}

TEST_F(PressesTest, LeavingTheSessionEndsEverythingAndKeepsTheReleases) {
    Assign(Button4, kShift);
    Press(Button4);
    Press(Center);
    Done();
    LeaveSession();
    EXPECT_EQ(Done(), "End Button4 19 #1");
    EXPECT_EQ(engine.HeldButtons(), 0U);
    EXPECT_TRUE(Release(Button4));
    EXPECT_FALSE(Release(Center));
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, AReleaseThatWasMissedEndsWhatIsHeldAndIsForgotten) {
    Assign(Button4, kShift);
    Press(Button4);
    Done();
    MissRelease(Button4);
    EXPECT_EQ(Done(), "End Button4 19 #1");
    EXPECT_EQ(engine.HeldButtons(), 0U);
    EXPECT_FALSE(Release(Button4));
    EXPECT_EQ(Done(), "");
}

TEST_F(PressesTest, OnlyTheButtonWhoseReleaseWasMissedIsForgotten) {
    Assign(Button4, kShift);
    Press(Button4);
    Done();
    MissRelease(Button5);
    MissRelease(TiltLeft);
    EXPECT_EQ(Done(), "");
    EXPECT_TRUE(Release(Button4));
}

TEST_F(PressesTest, AnOrderNamesTheButtonsThatProgramsSeeAsHeld) {
    Assign(Button4, 1);
    Assign(Button5, kOff);
    Press(Left);
    Press(Button5);
    Press(Button4);
    EXPECT_EQ(last.passedButtons, 0b00001U);
    Press(Right);
    Release(Left);
    Release(Button4);
    EXPECT_EQ(last.passedButtons, 0b00010U);
    Release(Right);
    Press(Button4);
    EXPECT_EQ(last.passedButtons, 0U);
}

TEST_F(PressesTest, AButtonThatAnotherSessionMayHaveReleasedDoesNotCountAsHeld) {
    Assign(Button4, 1);
    Press(Left);
    LeaveSession();
    Press(Button4);
    EXPECT_EQ(last.passedButtons, 0U);
}

TEST_F(PressesTest, UnderOverloadNewPressesAreNaturalAndOldOnesEnd) {
    Assign(Button4, kShift);
    Assign(Button5, kCopy);
    Assign(TiltRight, kCopy);
    Press(Button4);
    Done();
    engine.OnOverload(true);
    EXPECT_FALSE(Press(Button5));
    EXPECT_FALSE(Tilt(120));
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "End Button4 19 #1");
    engine.OnOverload(false);
    EXPECT_FALSE(Release(Button5));
    EXPECT_TRUE(Press(Button5));
}

TEST_F(PressesTest, HeldButtonsArePhysical) {
    Press(Left);
    EXPECT_EQ(engine.HeldButtons(), 0b00001U);
    Release(Left);
    engine.OnSwapped(true);
    Press(Left);
    EXPECT_EQ(engine.HeldButtons(), 0b00010U);
    Press(Right);
    Press(Button5);
    EXPECT_EQ(engine.HeldButtons(), 0b10011U);
    Release(Left);
    EXPECT_EQ(engine.HeldButtons(), 0b10001U);
}

TEST_F(PressesTest, AButtonThatIsHeldBeforeTheFirstEventCountsAsHeldAndItsReleasePasses) {
    Assign(Center, kShift);
    engine.OnHeldBefore(Center);
    EXPECT_EQ(engine.HeldButtons(), 0b00100U);
    EXPECT_FALSE(Release(Center));
    EXPECT_EQ(engine.HeldButtons(), 0U);
    EXPECT_EQ(engine.PressCount(), 0U);
    EXPECT_EQ(Done(), "");
    EXPECT_TRUE(Press(Center));
}

TEST_F(PressesTest, KeptButtonsCountAsHeld) {
    Assign(Center, kOff);
    Press(Center);
    EXPECT_EQ(engine.HeldButtons(), 0b00100U);
    Release(Center);
    EXPECT_EQ(engine.HeldButtons(), 0U);
}

TEST_F(PressesTest, ButtonsThatAreSwappedWhileOneIsHeldReleaseTheSameOne) {
    Assign(Right, kShift);
    EXPECT_TRUE(Press(Right));
    engine.OnSwapped(true);
    EXPECT_TRUE(Release(Left));
    EXPECT_EQ(Done(), "Begin Right 19 #1; End Right 19 #1");
    EXPECT_EQ(engine.HeldButtons(), 0U);
}

TEST_F(PressesTest, PressesAndPushesAreCounted) {
    Press(Left);
    Release(Left);
    Tilt(120);
    Tilt(120);
    Tilt(-120);
    Wheel(120);
    EXPECT_EQ(engine.PressCount(), 3U);
}

}  // namespace
}  // namespace kvn::service

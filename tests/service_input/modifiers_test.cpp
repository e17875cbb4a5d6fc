#include "tests/service_input/performer_fixture.h"

namespace kvn::test {
namespace {

using model::EtcKey;

class ModifiersTest : public PerformerTest {};

TEST_F(ModifiersTest, ShiftThatTheUserHoldsIsLiftedForAChordAndPutBack) {
    UserHolds(VK_LSHIFT);
    Act(kCopy);
    EXPECT_EQ(recorder.Await("-Shift +Ctrl +C -C -Ctrl +Shift"), "-Shift +Ctrl +C -C -Ctrl +Shift");
    EXPECT_NE(GetAsyncKeyState(VK_LSHIFT) & 0x8000, 0);
}

TEST_F(ModifiersTest, AHeldChordPutsTheUsersShiftBackAtOnce) {
    UserHolds(VK_RSHIFT);
    Begin(1, kKeys, {{VK_LCONTROL, 'V', model::kNoKey}});
    EXPECT_EQ(recorder.Await("-RShift +Ctrl +V +RShift"), "-RShift +Ctrl +V +RShift");
    End(1);
    EXPECT_EQ(recorder.Await("-RShift +Ctrl +V +RShift -V -Ctrl"), "-RShift +Ctrl +V +RShift -V -Ctrl");
}

TEST_F(ModifiersTest, AModifierThatTheUserHoldsIsNeitherPressedNorReleased) {
    UserHolds(VK_LCONTROL);
    Act(kCopy);
    EXPECT_EQ(recorder.Await("+C -C"), "+C -C");
}

TEST_F(ModifiersTest, EitherSideOfAModifierWillDoWhereNoneIsNamed) {
    UserHolds(VK_RCONTROL);
    Act(kCopy);
    EXPECT_EQ(recorder.Await("+C -C"), "+C -C");
}

TEST_F(ModifiersTest, ASideThatIsNamedIsPressedBesideTheOtherOne) {
    UserHolds(VK_RCONTROL);
    Act(kKeys, {{VK_LCONTROL, 'C', model::kNoKey}});
    EXPECT_EQ(recorder.Await("+Ctrl +C -C -Ctrl"), "+Ctrl +C -C -Ctrl");
}

TEST_F(ModifiersTest, ALiftedAltKeyOpensNoMenu) {
    UserHolds(VK_LMENU);
    Act(kCopy);
    const std::string expected = "+Mask -Mask -Alt +Ctrl +C -C -Ctrl +Alt +Mask -Mask";
    EXPECT_EQ(recorder.Await(expected), expected);
}

TEST_F(ModifiersTest, AKeyWithoutModifierJoinsWhatTheUserHolds) {
    UserHolds(VK_LSHIFT);
    Begin(1, kTab);
    End(1);
    EXPECT_EQ(recorder.Await("+Tab -Tab"), "+Tab -Tab");
}

TEST_F(ModifiersTest, AKeyWithoutModifierJoinsWhatAnotherControlHolds) {
    Begin(1, kShift);
    Begin(2, kTab);
    AwaitDone(2);
    End(2);
    End(1);
    EXPECT_EQ(recorder.Await("+Shift +Tab -Tab -Shift"), "+Shift +Tab -Tab -Shift");
}

TEST_F(ModifiersTest, AModifierByItselfJoinsOthersAsTheRealKeyDoes) {
    UserHolds(VK_LSHIFT);
    Begin(1, kCtrl);
    AwaitDone(1);
    End(1);
    EXPECT_EQ(recorder.Await("+Ctrl -Ctrl"), "+Ctrl -Ctrl");
}

TEST_F(ModifiersTest, TheWindowsKeyIsPressedAlone) {
    UserHolds(VK_LSHIFT);
    Act(kWindows);
    EXPECT_EQ(recorder.Await("-Shift +Win -Win +Shift"), "-Shift +Win -Win +Shift");
}

TEST_F(ModifiersTest, AnotherControlsModifierIsLiftedToo) {
    Begin(1, kAlt);
    AwaitDone(1);
    recorder.Await("+Alt");
    recorder.Clear();
    Act(kCopy);
    const std::string expected = "+Mask -Mask -Alt +Ctrl +C -C -Ctrl +Alt +Mask -Mask";
    EXPECT_EQ(recorder.Await(expected), expected);
    End(1);
    EXPECT_EQ(recorder.Await(expected + " -Alt"), expected + " -Alt");
}

}  // namespace
}  // namespace kvn::test

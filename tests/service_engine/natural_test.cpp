// Events that are left to Windows.
#include <array>

#include "tests/service_engine/engine_fixture.h"

namespace kvn::service {
namespace {

class NaturalTest : public EngineTest {
protected:
    void ExpectNatural(model::ButtonSlot control) {
        EXPECT_FALSE(Press(control)) << NameOf(control);
        EXPECT_FALSE(Release(control)) << NameOf(control);
        EXPECT_EQ(Done(), "");
    }
};

constexpr std::array kButtons{Left, Right, Center, Button4, Button5};

TEST_F(NaturalTest, EveryControlIsNaturalWithItsOwnFunction) {
    for (const auto button : kButtons) ExpectNatural(button);
    EXPECT_FALSE(Tilt(-120));
    EXPECT_FALSE(Tilt(120));
    EXPECT_EQ(Done(), "");
}

TEST_F(NaturalTest, UnknownCodesAreNatural) {
    for (const model::FunctionCode code : {0, -1, -2, 35, 46, 49, 50, 52, 55, 1'000'000}) {
        Assign(Button4, code);
        ExpectNatural(Button4);
        Assign(TiltLeft, code);
        now += 1000;
        EXPECT_FALSE(Tilt(-120));
        EXPECT_EQ(Done(), "");
    }
}

TEST_F(NaturalTest, TheOwnFunctionOfAnotherControlIsNot) {
    Assign(Button4, 4);
    EXPECT_TRUE(Press(Button4));
    EXPECT_TRUE(Release(Button4));
    EXPECT_EQ(Done(), "Begin Button4 4 #1; End Button4 4 #1");
}

TEST_F(NaturalTest, KeysThatNameNoKeyAreNatural) {
    const model::EtcKey onlyPrompt{{model::kPromptKey, model::kNoKey, model::kNoKey}};
    const model::EtcKey unknown{{7, 224, 100'000}};
    for (const model::EtcKey& keys : {model::EtcKey{}, onlyPrompt, unknown}) {
        Assign(Center, kKeys, keys);
        ExpectNatural(Center);
    }
}

TEST_F(NaturalTest, OneKnownKeyAmongUnknownOnesIsEnough) {
    Assign(Center, kKeys, {{model::kPromptKey, 7, 'V'}});
    EXPECT_TRUE(Press(Center));
    EXPECT_EQ(last.keys.codes[2], 'V');
    EXPECT_EQ(Done(), "Begin Center 37 #1");
}

TEST_F(NaturalTest, ATiltDrawsNoGestures) {
    Assign(TiltRight, kGesture);
    EXPECT_FALSE(Tilt(120));
    EXPECT_EQ(Done(), "");
}

TEST_F(NaturalTest, ATiltsOwnFunctionIsNaturalAtSpeedFourOnly) {
    settings.horizontalSpeed = 5;
    Apply();
    EXPECT_TRUE(Tilt(-120));
    settings.horizontalSpeed = 4;
    Apply();
    now += 300;
    EXPECT_FALSE(Tilt(-120));
}

TEST_F(NaturalTest, ASpeedOutOfRangeCountsAsFour) {
    for (const std::int32_t speed : {-1, 0, 9, 1000}) {
        settings.horizontalSpeed = speed;
        Apply();
        now += 300;
        EXPECT_FALSE(Tilt(-120)) << speed;
    }
}

TEST_F(NaturalTest, ATiltWithTheOthersFunctionIsNotNatural) {
    Assign(TiltLeft, kScrollRight);
    EXPECT_TRUE(Tilt(-120));
    EXPECT_EQ(Done(), "Scroll TiltLeft 34 by 120");
}

TEST_F(NaturalTest, TheLeftButtonClicksWhenNoControlHoldsTheLeftClick) {
    for (const model::FunctionCode code : {kCopy, kShift, kOff, kGesture, kEnter}) {
        Assign(Left, code);
        ExpectNatural(Left);
    }
}

TEST_F(NaturalTest, TheLeftButtonIsFreeWhenAnotherControlHoldsTheLeftClick) {
    Assign(Left, kCopy);
    for (const auto control : {Right, Button5, TiltRight}) {
        const auto before = settings.functions[control];
        Assign(control, 1);
        EXPECT_TRUE(Press(Left)) << NameOf(control);
        EXPECT_TRUE(Release(Left));
        Assign(control, before);
    }
}

TEST_F(NaturalTest, ALeftClickOnAControlThatTheMouseLacksDoesNotCount) {
    Assign(Left, kCopy);
    Assign(Button5, 1);
    for (const std::int32_t count : {4, 3, 0, -5}) {
        settings.controlCount = count;
        Apply();
        ExpectNatural(Left);
    }
    settings.controlCount = 5;
    Apply();
    EXPECT_TRUE(Press(Left));
}

TEST_F(NaturalTest, ALeftClickInAGestureDoesNotCount) {
    Assign(Left, kCopy);
    Assign(Center, kGesture);
    AddGesture({StrokeDirection::Up}, 1);
    ExpectNatural(Left);
}

TEST_F(NaturalTest, AButtonBeyondTheCountIsServedAllTheSame) {
    settings.controlCount = 3;
    Assign(Button5, kCopy);
    EXPECT_TRUE(Press(Button5));
    EXPECT_EQ(Done(), "Act Button5 10");
}

TEST_F(NaturalTest, MovesAndTheWheelPass) {
    EXPECT_FALSE(Keeps(Event(MouseEventKind::Move)));
    EXPECT_FALSE(Wheel(120));
    EXPECT_FALSE(Wheel(-120));
    EXPECT_EQ(Done(), "");
}

TEST_F(NaturalTest, AReportOfZeroPasses) {
    Assign(TiltRight, kCopy);
    EXPECT_FALSE(Tilt(0));
    EXPECT_FALSE(Wheel(0));
    EXPECT_EQ(Done(), "");
}

}  // namespace
}  // namespace kvn::service

#include "service/input/mouse_choice.h"

#include <gtest/gtest.h>

namespace kvn::test {
namespace {

using service::MouseFacts;

constexpr std::uint32_t kLeft = 1U, kButton5 = 1U << 4U;

const MouseFacts kTouchpad{L"HID#VID_0001&PID_0001", 2, false};
const MouseFacts kMouse{L"HID#VID_0002&PID_0002", 3, false};
const MouseFacts kTiltMouse{L"HID#VID_0003&PID_0003", 5, true};

class MouseChoiceTest : public testing::Test {
protected:
    std::uint32_t ChosenVid() const { return choice.Chosen() ? choice.Chosen()->vid : 0; }

    int devices[3] = {};
    void* const touchpad = &devices[0];
    void* const mouse = &devices[1];
    void* const tiltMouse = &devices[2];
    service::MouseChoice choice;
};

TEST_F(MouseChoiceTest, AtTheStartTheOneWithTheMostButtonsIsChosen) {
    choice.Attach(touchpad, kTouchpad);
    choice.Attach(tiltMouse, kTiltMouse);
    choice.Attach(mouse, kMouse);
    choice.ChooseMostCapable();
    EXPECT_EQ(ChosenVid(), 3U);
}

TEST_F(MouseChoiceTest, TheMouseThatWasUsedLastIsChosen) {
    choice.Attach(tiltMouse, kTiltMouse);
    choice.Attach(mouse, kMouse);
    EXPECT_EQ(ChosenVid(), 3U);
    EXPECT_TRUE(choice.Take(mouse, 0, true));
    EXPECT_EQ(ChosenVid(), 2U);
}

TEST_F(MouseChoiceTest, ATouchpadsTapChangesNothing) {
    choice.Attach(mouse, kMouse);
    choice.Attach(touchpad, kTouchpad);
    EXPECT_TRUE(choice.Take(touchpad, kLeft, false));
    EXPECT_EQ(ChosenVid(), 2U);
}

TEST_F(MouseChoiceTest, ANewMouseIsChosenOnlyIfThereIsNoOther) {
    EXPECT_FALSE(choice.Chosen());
    choice.Attach(mouse, kMouse);
    EXPECT_EQ(ChosenVid(), 2U);
    choice.Attach(tiltMouse, kTiltMouse);
    EXPECT_EQ(ChosenVid(), 2U);
}

TEST_F(MouseChoiceTest, AnotherMouseTakesThePlaceOfOneThatWasRemoved) {
    choice.Attach(mouse, kMouse);
    choice.Attach(tiltMouse, kTiltMouse);
    choice.Detach(mouse);
    EXPECT_EQ(ChosenVid(), 3U);
}

TEST_F(MouseChoiceTest, TheLastMouseStaysWhenItIsRemovedUntilAnotherOneComes) {
    choice.Attach(mouse, kMouse);
    choice.Detach(mouse);
    EXPECT_EQ(ChosenVid(), 2U);
    choice.Attach(touchpad, kTouchpad);
    EXPECT_EQ(ChosenVid(), 1U);
}

TEST_F(MouseChoiceTest, AButtonBeyondTheCountCountsWhenTheMouseIsAttachedAgain) {
    choice.Attach(mouse, kMouse);
    choice.Take(mouse, kButton5, true);
    EXPECT_EQ(choice.Chosen()->buttonCount, 3);
    choice.Detach(mouse);
    choice.Attach(mouse, kMouse);
    EXPECT_EQ(choice.Chosen()->buttonCount, 5);
}

TEST_F(MouseChoiceTest, InputWithoutADeviceIsIgnored) {
    choice.Attach(mouse, kMouse);
    EXPECT_FALSE(choice.Take(nullptr, kLeft, true));
}

}  // namespace
}  // namespace kvn::test

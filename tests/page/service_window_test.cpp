#include "platform/service_window.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/support/debug_output.h"
#include "tests/support/fake_service.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using platform::ServiceButton;
using platform::ServiceMessage;

constexpr std::array kTwoButtons{ServiceButton::Button4, ServiceButton::Left};

TEST(ServiceWindow, WithoutAServiceNothingIsSentAndNoButtonIsHeld) {
    ASSERT_EQ(nullptr, platform::FindService());
    EXPECT_FALSE(platform::IsServiceAvailable());
    EXPECT_FALSE(platform::AreButtonsHeld(kTwoButtons));
    platform::NotifySettingsChanged();
    platform::NotifyGestureEditBegin();
    platform::NotifyGestureEditEnd();
}

TEST(ServiceWindow, AServiceThatAnswersMinusOneIsNotAvailable) {
    FakeService service;
    EXPECT_TRUE(platform::IsServiceAvailable());
    service.ReplyTo(ServiceMessage::Probe, -1);
    EXPECT_FALSE(platform::IsServiceAvailable());
}

TEST(ServiceWindow, GestureEditBeginIsSentAndItsEndIsPosted) {
    FakeService service;
    platform::NotifyGestureEditBegin();
    platform::NotifyGestureEditEnd();
    EXPECT_EQ((std::vector<ServiceCall>{{NumberOf(ServiceMessage::GestureEditBegin), 0, 0, true},
                                        {NumberOf(ServiceMessage::GestureEditEnd), 0, 0, false}}),
              service.Calls());
}

TEST(ServiceWindow, TheFirstButtonThatIsNotHeldEndsTheQuery) {
    FakeService service;
    const DebugOutput debugOutput;
    EXPECT_FALSE(platform::AreButtonsHeld(kTwoButtons));
    EXPECT_EQ((std::vector<ServiceCall>{{NumberOf(ServiceMessage::IsButtonHeld), 0, 8, true}}), service.Calls());
    EXPECT_EQ("", debugOutput.Text());
}

TEST(ServiceWindow, ButtonsThatAreAllHeldAreAskedForInOrder) {
    FakeService service;
    service.ReplyTo(ServiceMessage::IsButtonHeld, 1);
    const DebugOutput debugOutput;
    EXPECT_TRUE(platform::AreButtonsHeld(kTwoButtons));
    EXPECT_EQ((std::vector<ServiceCall>{{NumberOf(ServiceMessage::IsButtonHeld), 0, 8, true},
                                        {NumberOf(ServiceMessage::IsButtonHeld), 0, 1, true}}),
              service.Calls());
    EXPECT_EQ("Key ON\nKey ON\n", debugOutput.Text());
}

TEST(ServiceWindow, NoButtonsAreNotHeldAndAreNotAskedFor) {
    FakeService service;
    EXPECT_FALSE(platform::AreButtonsHeld({}));
    EXPECT_TRUE(service.Calls().empty());
}

}  // namespace
}  // namespace kvn::test

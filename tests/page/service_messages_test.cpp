#include "platform/service_messages.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/debug_output.h"
#include "tests/support/fake_service.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using platform::ServiceButton;
using platform::ServiceMessage;

TEST(ServiceMessagesTest, WithoutAServiceNothingIsSentAndNoButtonIsHeld) {
    ASSERT_EQ(platform::FindService(), nullptr);
    EXPECT_FALSE(platform::IsServiceAvailable());
    EXPECT_FALSE(platform::IsButtonHeld(ServiceButton::Button4));
    platform::NotifySettingsChanged();
    platform::NotifyGestureEditBegin();
    platform::NotifyGestureEditEnd();
}

TEST(ServiceMessagesTest, AServiceThatAnswersMinusOneIsNotAvailable) {
    FakeService service;
    EXPECT_TRUE(platform::IsServiceAvailable());
    service.ReplyTo(ServiceMessage::Probe, -1);
    EXPECT_FALSE(platform::IsServiceAvailable());
}

TEST(ServiceMessagesTest, GestureEditBeginIsSentAndItsEndIsPosted) {
    FakeService service;
    platform::NotifyGestureEditBegin();
    platform::NotifyGestureEditEnd();
    EXPECT_EQ(service.Calls(), (std::vector<ServiceCall>{{NumberOf(ServiceMessage::GestureEditBegin), 0, 0, true},
                                                         {NumberOf(ServiceMessage::GestureEditEnd), 0, 0, false}}));
}

TEST(ServiceMessagesTest, AButtonIsNotHeldWhenTheServiceAnswersZero) {
    FakeService service;
    const DebugOutput debugOutput;
    EXPECT_FALSE(platform::IsButtonHeld(ServiceButton::Button4));
    EXPECT_EQ(service.Calls(), (std::vector<ServiceCall>{{NumberOf(ServiceMessage::IsButtonHeld), 0, 8, true}}));
    EXPECT_EQ(debugOutput.Text(), "");
}

TEST(ServiceMessagesTest, AHeldButtonIsReportedToTheDebugger) {
    FakeService service;
    service.ReplyTo(ServiceMessage::IsButtonHeld, 1);
    const DebugOutput debugOutput;
    EXPECT_TRUE(platform::IsButtonHeld(ServiceButton::Button4));
    EXPECT_EQ(debugOutput.Text(), "Key ON\n");
}

}  // namespace
}  // namespace kvn::test

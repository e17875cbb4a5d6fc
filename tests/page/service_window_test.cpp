#include "platform/service_window.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/support/fake_service.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using platform::ServiceButton;
using platform::ServiceMessage;

constexpr std::array kTwoButtons{ServiceButton::Button4, ServiceButton::Left};

UINT NumberOf(ServiceMessage message) {
    return static_cast<UINT>(message);
}

// What is written to the debugger's output while the object lives.
class DebugOutput {
public:
    DebugOutput() : handler(AddVectoredExceptionHandler(1, Record)) { written.clear(); }
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;
    ~DebugOutput() { RemoveVectoredExceptionHandler(handler); }

    const std::string& Text() const { return written; }

private:
    // Debug output is an exception that a debugger would take: its arguments are the text's length with its zero, and
    // the text.
    static LONG CALLBACK Record(EXCEPTION_POINTERS* exception) {
        const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
        constexpr DWORD kDebugPrint = 0x40010006;
        if (record.ExceptionCode != kDebugPrint) return EXCEPTION_CONTINUE_SEARCH;
        written += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        return EXCEPTION_CONTINUE_EXECUTION;
    }

    void* handler;
    static inline std::string written;
};

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
    Await("the end of the gesture editor", [&] { return service.CountOf(ServiceMessage::GestureEditEnd) == 1; });
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

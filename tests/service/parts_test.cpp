// Small parts of the service, one by one.
#include <gtest/gtest.h>

#include "platform/service_protocol.h"
#include "service/driver/hook_check.h"
#include "service/driver/press_log.h"
#include "service/driver/status.h"
#include "service/lifecycle/watcher.h"
#include "service/options/arguments.h"
#include "service/page/page_protocol.h"
#include "service/page/window_numbers.h"
#include "service/tray/tray_menu.h"

namespace kvn::service {
namespace {

TEST(HookCheckTest, APressThatTheHookSawCloseToItsTimeIsNotMissed) {
    EXPECT_FALSE(HasMissed(5'000, 5'000));
    EXPECT_FALSE(HasMissed(4'900, 5'000));
    EXPECT_FALSE(HasMissed(6'000, 5'000));
    EXPECT_FALSE(HasMissed(3'000'000, 5'000)) << "reported late, in a flood of presses";
    EXPECT_FALSE(HasMissed(0xFFFFFFF0U, 5U));
    EXPECT_FALSE(HasMissed(5U, 0xFFFFFFF0U));
}

TEST(HookCheckTest, APressLongAfterTheHooksLastOneIsMissed) {
    EXPECT_TRUE(HasMissed(4'000, 5'000));
    EXPECT_TRUE(HasMissed(0, 5'000));
    EXPECT_TRUE(HasMissed(0, 0x90000000U));
}

TEST(RestartLimitTest, ThreeRestartsAreAllowedInAnyTenMinutes) {
    constexpr std::uint64_t kMinute = 60'000;
    RestartLimit limit;
    EXPECT_TRUE(limit.Allows(1 * kMinute));
    EXPECT_TRUE(limit.Allows(2 * kMinute));
    EXPECT_TRUE(limit.Allows(3 * kMinute));
    EXPECT_FALSE(limit.Allows(10 * kMinute));
    EXPECT_TRUE(limit.Allows(11 * kMinute));
    EXPECT_FALSE(limit.Allows(11 * kMinute + 1));
    EXPECT_TRUE(limit.Allows(12 * kMinute));
}

TEST(TrayMenuTest, AnAmpersandIsShownAsItIs) {
    EXPECT_EQ(MenuText(L"R&D && more"), L"R&&D &&&& more");
}

TEST(TrayMenuTest, AControlCharacterOfANameIsABlank) {
    EXPECT_EQ(MenuText(L"a\tb\n"), L"a b ");
}

TEST(StatusTest, EachKeyHasOneLineWhateverAProfileIsCalled) {
    const std::wstring text = StatusText({.mouse = std::nullopt, .profile = L"A\nwhy=forced\t"});
    EXPECT_NE(text.find(L"\nprofile=A why=forced \nwhy=selected\n"), std::wstring::npos);
}

TEST(FullPathTest, ALongPathGetsTheFormWithoutALimit) {
    const std::wstring name(200, L'n');
    const std::wstring rest = L'\\' + name + L'\\' + name;
    EXPECT_EQ(FullPath(L"C:" + rest), LR"(\\?\C:)" + rest);
    EXPECT_EQ(FullPath(LR"(\\server\share)" + rest), LR"(\\?\UNC\server\share)" + rest);
    EXPECT_EQ(FullPath(LR"(\\?\C:)" + rest), LR"(\\?\C:)" + rest);
    EXPECT_EQ(FullPath(LR"(C:\a\..\b c.xml)"), LR"(C:\b c.xml)");
}

TEST(PressLogTest, ALineHasFiveFieldsWhateverTheNamesHold) {
    SYSTEMTIME time{};
    time.wYear = 2024, time.wMonth = 5, time.wDay = 6, time.wHour = 7, time.wMinute = 8, time.wMilliseconds = 9;
    Order order;
    order.control = model::ButtonSlot::TiltLeft;
    order.controlFunction = 10;
    EXPECT_EQ(LogLine(time, order, L"My\tprofile\n", L"Ctrl+C"),
              L"2024-05-06 07:08:00.009\ttilt-left\t10\tMy profile \tCtrl+C\r\n");
}

TEST(PressLogTest, AGestureIsNamedByItsStroke) {
    Order order;
    order.cause = Cause::Gesture;
    order.stroke = {model::StrokeDirection::Down, model::StrokeDirection::Right};
    EXPECT_NE(LogLine({}, order, L"", L"Ctrl+C").find(L"\tgesture DR: Ctrl+C\r\n"), std::wstring::npos);
}

// The protocol with a window of the test.
class PageProtocolTest : public testing::Test {
protected:
    std::optional<LRESULT> Say(platform::ServiceMessage message, LPARAM lParam = 0) {
        return protocol.OnMessage({nullptr, static_cast<UINT>(message), 0, lParam});
    }
    void LookOnce() { protocol.OnMessage({nullptr, WM_TIMER, static_cast<WPARAM>(Timer::GestureEdit), 0}); }

    bool isMouseKnown = true;
    bool isPageOpen = true;
    int edits = 0;
    int changes = 0;
    std::optional<model::ButtonSlot> asked;
    PageProtocol protocol{{.isMouseKnown = [this] { return isMouseKnown; },
                           .onSettingsChanged = [this] { ++changes; },
                           .onGestureEditBegin = [this] { ++edits; },
                           .onGestureEditEnd = [this] { --edits; },
                           .onGestureEditForgotten = [this] { edits = 0; },
                           .isGestureEdited = [this] { return edits != 0; },
                           .isButtonHeld =
                               [this](model::ButtonSlot slot) {
                                   asked = slot;
                                   return true;
                               },
                           .isPageOpen = [this] { return isPageOpen; }}};
};

TEST_F(PageProtocolTest, EachMessageOfThePageHasItsAnswer) {
    EXPECT_EQ(Say(platform::ServiceMessage::Probe), 1);
    isMouseKnown = false;
    EXPECT_EQ(Say(platform::ServiceMessage::Probe), platform::kProbeRefused);
    EXPECT_EQ(Say(platform::ServiceMessage::SettingsChanged), 0);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Say(platform::ServiceMessage::IsButtonHeld, 8), 1);
    EXPECT_EQ(asked, model::ButtonSlot::Button4);
    EXPECT_EQ(protocol.OnMessage({nullptr, WM_APP + 1, 0, 0}), std::nullopt);
}

TEST_F(PageProtocolTest, ButtonsThatDoNotExistAreNotAskedFor) {
    for (const LPARAM mask : {0, 3, 32, -1}) EXPECT_EQ(Say(platform::ServiceMessage::IsButtonHeld, mask), 0);
    EXPECT_FALSE(asked);
}

TEST_F(PageProtocolTest, EditsAreForgottenOnlyWhenNoPageIsOpen) {
    Say(platform::ServiceMessage::GestureEditBegin);
    Say(platform::ServiceMessage::GestureEditBegin);
    LookOnce();
    EXPECT_EQ(edits, 2);
    isPageOpen = false;
    LookOnce();
    EXPECT_EQ(edits, 0);
}

}  // namespace
}  // namespace kvn::service

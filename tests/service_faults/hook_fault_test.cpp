// A hook that was silently removed.
#include <windows.h>

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "service/driver/hook_check.h"
#include "service/input/hook_thread.h"
#include "service/input/key_sending.h"
#include "service/page/service_window.h"
#include "tests/support/replaced_import.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using service::HookCheck;

constexpr std::uint32_t kButton4 = 1U << 3U, kOtherButtons = 1U << 2U;

// Supplies the time of the hook's last press, and counts the findings of the check.
struct Watched {
    HookCheck check{{.lastPressOfHook = [this] { return lastPress; },
                     .heldButtons = [this] { return held; },
                     .onBlind = [this] { ++blind; },
                     .onReleaseMissed = [this](model::ButtonSlot button) { missed.push_back(button); }}};
    service::ServiceWindow window{check};
    std::uint32_t lastPress = 0;
    std::uint32_t held = 0;
    int blind = 0;
    std::vector<model::ButtonSlot> missed;

    Watched() { EXPECT_TRUE(window.Create()); }
    void Press(std::uint32_t time) { check.OnButtons(window.Handle(), {.pressed = kButton4, .time = time}); }
    void Release() { check.OnButtons(window.Handle(), {.released = kButton4}); }
    void AwaitTimers(int count) {
        MSG message{};
        while (count > 0 && GetMessageW(&message, nullptr, 0, 0) > 0) {
            DispatchMessageW(&message);
            if (message.message == WM_TIMER && message.hwnd == window.Handle()) --count;
        }
    }
};

TEST(HookFaultTest, APressThatTheHookSawABitEarlierOrLaterIsNotMissed) {
    EXPECT_FALSE(service::HasMissed(1000, 1000));
    EXPECT_FALSE(service::HasMissed(990, 1000));
    EXPECT_FALSE(service::HasMissed(1900, 1000));
    EXPECT_TRUE(service::HasMissed(0, 1000));
    EXPECT_FALSE(service::HasMissed(5, 0xFFFF'FFF0));
}

TEST(HookFaultTest, APressThatTheHookHasMissedIsFoundOut) {
    Watched watched;
    watched.lastPress = 100'000;
    watched.Press(200'000);
    watched.AwaitTimers(1);
    EXPECT_EQ(watched.blind, 1);
}

TEST(HookFaultTest, APressRightAfterOneThatTheHookSawIsCheckedToo) {
    Watched watched;
    watched.lastPress = 200'000;
    watched.Press(200'000);
    watched.Press(200'600);
    watched.AwaitTimers(2);
    EXPECT_EQ(watched.blind, 1);
}

TEST(HookFaultTest, AReleaseThatTheHookHasMissedIsFoundOut) {
    Watched watched;
    watched.held = kButton4 | kOtherButtons;
    watched.Release();
    watched.AwaitTimers(2);
    EXPECT_TRUE(watched.missed.empty());  // Windows may still wait for the hook
    watched.AwaitTimers(1);
    EXPECT_EQ(watched.missed, std::vector{model::ButtonSlot::Button4});
    EXPECT_EQ(watched.blind, 0);
}

TEST(HookFaultTest, AReleaseThatTheHookSawIsNotMissed) {
    Watched watched;
    watched.held = kOtherButtons;
    watched.Release();
    watched.AwaitTimers(1);
    EXPECT_TRUE(watched.missed.empty());
}

TEST(HookFaultTest, AReleaseThatTheHookSeesLateIsNotMissed) {
    Watched watched;
    watched.held = kButton4;
    watched.Release();
    watched.AwaitTimers(1);
    watched.held = 0;
    watched.AwaitTimers(1);
    watched.held = kButton4;
    EXPECT_TRUE(watched.missed.empty());
}

TEST(HookFaultTest, AButtonThatIsPressedAgainCountsAsHeld) {
    Watched watched;
    watched.held = kButton4;
    watched.lastPress = 1000;
    watched.Release();
    watched.Press(1000);
    watched.AwaitTimers(2);
    EXPECT_TRUE(watched.missed.empty());
}

class RemovedHookTest : public testing::Test {
protected:
    RemovedHookTest() { EXPECT_TRUE(performer.Start() && thread.Start()); }

    static void Click() {
        service::InputBatch batch;
        batch.ButtonDown(VK_MBUTTON);
        batch.ButtonUp(VK_MBUTTON);
        batch.Send();
    }
    bool SeesAClick() {
        const std::uint32_t before = thread.LastPress();
        Sleep(20);  // until the clock advances
        Click();
        return thread.LastPress() != before;
    }

    HHOOK installed = nullptr;
    const ReplacedImport<"SetWindowsHookExW", HHOOK(int, HOOKPROC, HINSTANCE, DWORD)> install{
        GetModuleHandleW(nullptr), [this](int kind, HOOKPROC procedure, HINSTANCE module, DWORD threadId) {
            return installed = SetWindowsHookExA(kind, procedure, module, threadId);
        }};
    service::HeldList held;
    service::Performer performer{held, {}};
    service::MouseActivity activity;
    service::HookThread thread{performer, activity};
};

TEST_F(RemovedHookTest, IsInstalledAgainAfterAPressOfTheUser) {
    ASSERT_TRUE(ComesTrue([&] { return SeesAClick(); }));
    ASSERT_TRUE(UnhookWindowsHookEx(installed));
    ASSERT_FALSE(SeesAClick());
    int blind = 0;
    HookCheck check({.lastPressOfHook = [&] { return thread.LastPress(); },
                     .heldButtons = {},
                     .onBlind =
                         [&] {
                             ++blind;
                             thread.Reinstall();
                         },
                     .onReleaseMissed = {}});
    service::ServiceWindow window(check);
    ASSERT_TRUE(window.Create());
    check.OnButtons(window.Handle(), {.pressed = kButton4, .time = GetTickCount() + 1000});
    MSG message{};
    while (blind == 0 && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    EXPECT_EQ(blind, 1);
    EXPECT_TRUE(ComesTrue([&] { return SeesAClick(); }));
}

TEST_F(RemovedHookTest, PressesOfProgramsDoNotHideItFromThoseOfTheUser) {
    ASSERT_TRUE(UnhookWindowsHookEx(installed));
    Click();
    Click();
    EXPECT_TRUE(service::HasMissed(thread.LastPress(), GetTickCount()));
}

}  // namespace
}  // namespace kvn::test

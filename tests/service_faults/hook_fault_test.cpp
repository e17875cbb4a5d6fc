// A hook that is gone without a word.
#include <windows.h>

#include <gtest/gtest.h>

#include <optional>

#include "service/driver/hook_check.h"
#include "service/input/hook_thread.h"
#include "service/input/key_sending.h"
#include "service/page/service_window.h"
#include "tests/support/replaced_import.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using service::HookCheck;

// Hands out the time of the last press that a hook saw, and counts what the check finds.
struct Watched {
    HookCheck check{{.lastPressOfHook = [this] { return lastPress; }, .onBlind = [this] { ++blind; }}};
    service::ServiceWindow window{check};
    std::uint32_t lastPress = 0;
    int blind = 0;

    Watched() { EXPECT_TRUE(window.Create()); }
    void Press(std::uint32_t time) { check.OnPress(window.Handle(), time); }
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

TEST(HookFaultTest, APressRightAfterOneThatTheHookSawIsLookedAtToo) {
    Watched watched;
    watched.lastPress = 200'000;
    watched.Press(200'000);
    watched.Press(200'600);
    watched.AwaitTimers(2);
    EXPECT_EQ(watched.blind, 1);
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
        Sleep(20);  // the clock ticks on
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
                     .onBlind =
                         [&] {
                             ++blind;
                             thread.Reinstall();
                         }});
    service::ServiceWindow window(check);
    ASSERT_TRUE(window.Create());
    check.OnPress(window.Handle(), GetTickCount() + 1000);
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

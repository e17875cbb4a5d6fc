// The menu of the service's icon, worked by its keys.
#include <string>

#include "service/lifecycle/shared_state.h"
#include "service/page/window_numbers.h"
#include "service/resources/service_version.h"
#include "service/tray/try_window.h"
#include "tests/service/program.h"
#include "tests/support/message_box_watcher.h"
#include "tests/support/real_input.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::service_test {
namespace {

constexpr wchar_t kMenuClass[] = L"#32768";

class TrayMenuOfServiceTest : public ServiceProgramTest {
protected:
    static HWND Menu() {
        const HWND menu = FindWindowW(kMenuClass, nullptr);
        return menu != nullptr && IsWindowVisible(menu) ? menu : nullptr;
    }

    static void Report(UINT event) { PostMessageW(Window(), service::kTrayMessage, 1, static_cast<LPARAM>(event)); }

    // As the taskbar says that the user wants the menu by the keyboard.
    static void OpenMenu() {
        Report(WM_CONTEXTMENU);
        AwaitMenu();
    }
    static void AwaitMenu() {
        test::Await("the menu", Menu);
        test::Await("the menu's keys", [] { return GetForegroundWindow() == Window(); });
    }

    static void Choose(WORD key) {
        OpenMenu();
        test::PressKey(key);
        test::Await("the menu's end", [] { return Menu() == nullptr; });
    }
};

TEST_F(TrayMenuOfServiceTest, PauseIsSwitchedOnAndOff) {
    StartService();
    Choose('U');
    EXPECT_EQ(Status()["paused"], "yes");
    Choose('U');
    EXPECT_EQ(Status()["paused"], "no");
}

TEST_F(TrayMenuOfServiceTest, ARightClickOpensOneMenu) {
    StartService();
    for (const UINT event : {WM_RBUTTONDOWN, WM_RBUTTONUP, WM_CONTEXTMENU}) Report(event);
    AwaitMenu();
    test::PressKey('U');
    test::Await("the menu's end", [] { return Menu() == nullptr; });
    EXPECT_EQ(Status()["paused"], "yes");
    EXPECT_EQ(Menu(), nullptr);
}

TEST_F(TrayMenuOfServiceTest, TheSecondReportOfARightClickMayComeLate) {
    StartService();
    Report(WM_RBUTTONUP);
    AwaitMenu();
    test::PressKey(VK_ESCAPE);
    test::Await("the menu's end", [] { return Menu() == nullptr; });
    Report(WM_CONTEXTMENU);
    EXPECT_EQ(Status()["paused"], "no");
    EXPECT_EQ(Menu(), nullptr);
    Report(WM_MOUSEMOVE);
    Choose('U');
    EXPECT_EQ(Status()["paused"], "yes");
}

TEST_F(TrayMenuOfServiceTest, AProfileIsForcedUntilAutomaticIsChosen) {
    StartService();
    OpenMenu();
    test::PressKey('P');
    test::PressKey(VK_DOWN);  // from Automatic to the first profile
    test::PressKey(VK_RETURN);
    test::Await("the menu's end", [] { return Menu() == nullptr; });
    EXPECT_EQ(Status()["why"], "forced");
    OpenMenu();
    test::PressKey('P');
    test::PressKey('A');
    test::Await("the menu's end", [] { return Menu() == nullptr; });
    EXPECT_EQ(Status()["why"], "selected");
}

TEST_F(TrayMenuOfServiceTest, TheButtonsCanBeTried) {
    StartService();
    Choose('T');
    test::Await("the window", [] { return FindWindowW(service::kTryWindowClass, nullptr); });
}

TEST_F(TrayMenuOfServiceTest, AboutShowsTheVersionOnceWhileTheServiceGoesOn) {
    StartService();
    Choose('B');
    const HWND box = test::Await("the box", [] { return Dialog(); });
    EXPECT_NE(test::TextOfMessageBox(box).find(service::kVersion), std::wstring::npos);
    Choose('B');
    test::Await("the box in front", [=] { return GetForegroundWindow() == box; });
    EXPECT_EQ(Dialog(box), nullptr);
    EXPECT_EQ(Status()["paused"], "no");
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(test::ComesTrue([] { return Dialog() == nullptr; }));
}

TEST_F(TrayMenuOfServiceTest, AWatcherIsReplacedAndTheServiceEndsWhileAboutIsOpen) {
    StartService();
    service::SharedMemory memory;
    const auto findWatcher = [&] { return memory.State().watcherProcess.load(); };
    const DWORD watcher = test::Await("the watcher", findWatcher);
    Choose('B');
    test::Await("the box", [] { return Dialog(); });
    Kill(watcher);
    EXPECT_TRUE(test::ComesTrue([&] { return findWatcher() != watcher; }));
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    EXPECT_EQ(ExitCodeOfService(), 0U);
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(TrayMenuOfServiceTest, ExitEndsTheServiceAndItsWatcher) {
    StartService();
    OpenMenu();
    test::PressKey('X');
    EXPECT_EQ(ExitCodeOfService(), 0U);
    EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }));
}

TEST_F(TrayMenuOfServiceTest, TheServiceAnswersAndEndsWhileTheMenuIsOpen) {
    StartService();
    OpenMenu();
    EXPECT_EQ(Status()["paused"], "no");
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    EXPECT_EQ(Menu(), nullptr);
}

}  // namespace
}  // namespace kvn::service_test

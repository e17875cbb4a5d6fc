// The icon as the taskbar gets it, in both languages.
#include "service/tray/tray_icon.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>

#include "service/page/window_numbers.h"
#include "tests/service_look/taskbar.h"
#include "tests/service_look/user_language.h"

namespace kvn::service_test {
namespace {

using service::TrayCommand;
using service::TrayState;

const TrayState kAtWork{.mouse = L"1234:5678", .profile = L"Work", .forcedProfile = {}, .profiles = {}};

class TrayIconTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(taskbar.IsInPlace());
        icon.Show(window.Get());
    }

    std::wstring Tip(const TrayState& shown) {
        state = shown;
        icon.Refresh();
        return taskbar.Last().szTip;
    }
    void Report(UINT event) { icon.OnMessage({window.Get(), service::kTrayMessage, 1, static_cast<LPARAM>(event)}); }

    platform::Owned<HWND, &DestroyWindow> window{
        CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr)};
    const English english;
    Taskbar taskbar;
    TrayState state = kAtWork;
    std::vector<service::TrayChoice> choices;
    service::TrayIcon icon{{.state = [this] { return state; },
                            .onChoice = [this](const service::TrayChoice& choice) { choices.push_back(choice); }}};
};

TEST_F(TrayIconTest, ComesWithTipAndMessagesOfTheThirdVersion) {
    EXPECT_EQ(taskbar.Kinds(), (std::vector<DWORD>{NIM_ADD, NIM_SETVERSION}));
    const NOTIFYICONDATAW& added = taskbar.Requests().front().data;
    EXPECT_EQ(added.hWnd, window.Get());
    EXPECT_EQ(added.uCallbackMessage, service::kTrayMessage);
    EXPECT_EQ(added.uFlags, UINT{NIF_MESSAGE | NIF_ICON | NIF_TIP});
    EXPECT_NE(added.hIcon, nullptr);
    EXPECT_STREQ(added.szTip, L"Mouse 1234:5678\nProfile: Work");
    EXPECT_EQ(taskbar.Last().uVersion, UINT{NOTIFYICON_VERSION});
}

TEST_F(TrayIconTest, TipNamesMouseAndProfile) {
    EXPECT_EQ(Tip({}), L"No mouse");
    TrayState paused = kAtWork;
    paused.isPaused = true;
    EXPECT_EQ(Tip(paused), L"Mouse 1234:5678 - Paused\nProfile: Work");
    const Japanese japanese;
    EXPECT_EQ(Tip(paused), L"マウス 1234:5678 - 一時停止中\nプロファイル: Work");
    EXPECT_EQ(Tip({}), L"マウスなし");
}

TEST_F(TrayIconTest, TipHasTwoLinesWhateverAProfileIsCalled) {
    TrayState odd = kAtWork;
    odd.profile = L"A\tB\r\nC %1";
    EXPECT_EQ(Tip(odd), L"Mouse 1234:5678\nProfile: A B  C %1");
    odd.profile.assign(300, L'x');
    EXPECT_EQ(Tip(odd).size(), 127U);
}

TEST_F(TrayIconTest, PauseHasAnotherIcon) {
    const HICON atWork = taskbar.Last().hIcon;
    state.isPaused = true;
    icon.Refresh();
    EXPECT_NE(taskbar.Last().hIcon, nullptr);
    EXPECT_NE(taskbar.Last().hIcon, atWork);
    state.isPaused = false;
    icon.Refresh();
    EXPECT_EQ(taskbar.Last().hIcon, atWork);
}

TEST_F(TrayIconTest, ComesBackInItsCurrentStateWhenExplorerDoes) {
    state.isPaused = true;
    icon.OnMessage({window.Get(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0});
    EXPECT_EQ(taskbar.Kinds(), (std::vector<DWORD>{NIM_ADD, NIM_SETVERSION, NIM_ADD, NIM_SETVERSION}));
    EXPECT_STREQ(taskbar.Requests()[2].data.szTip, L"Mouse 1234:5678 - Paused\nProfile: Work");
}

TEST_F(TrayIconTest, BalloonIsOfTheServiceAndFits) {
    icon.ShowBalloon(L"Look here.", NIIF_WARNING);
    EXPECT_EQ(taskbar.Last().uFlags, UINT{NIF_INFO});
    EXPECT_STREQ(taskbar.Last().szInfoTitle, L"KORVEN mouse service");
    EXPECT_STREQ(taskbar.Last().szInfo, L"Look here.");
    EXPECT_EQ(taskbar.Last().dwInfoFlags, DWORD{NIIF_WARNING});
    icon.ShowBalloon(std::wstring(254, L'x') + L"\U0001F600", NIIF_INFO);
    EXPECT_EQ(std::wstring(taskbar.Last().szInfo), std::wstring(254, L'x'));
}

TEST_F(TrayIconTest, BalloonsWithoutATaskbarWaitForIt) {
    taskbar.isThere = false;
    icon.ShowBalloon(L"First", NIIF_INFO);
    icon.ShowBalloon(L"Second", NIIF_ERROR);
    icon.Refresh();
    taskbar.isThere = true;
    const std::size_t before = taskbar.Balloons().size();
    icon.OnMessage({window.Get(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0});
    icon.OnMessage({window.Get(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0});
    const auto shown = taskbar.Balloons();
    EXPECT_EQ(std::vector<std::wstring>(shown.begin() + static_cast<std::ptrdiff_t>(before), shown.end()),
              (std::vector<std::wstring>{L"First", L"Second"}));
    EXPECT_EQ(taskbar.KindOfBalloon(), DWORD{NIIF_ERROR});
}

TEST_F(TrayIconTest, DoubleClickAndEnterOpenTheSettingsAndNothingElseDoes) {
    for (const UINT event :
         std::initializer_list<UINT>{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP, NIN_SELECT, WM_MBUTTONUP})
        Report(event);
    EXPECT_TRUE(choices.empty());
    Report(WM_LBUTTONDBLCLK);
    Report(NIN_KEYSELECT);
    EXPECT_EQ(choices, (std::vector<service::TrayChoice>{TrayCommand::Settings, TrayCommand::Settings}));
}

TEST_F(TrayIconTest, IsRemovedOnce) {
    icon.Remove();
    icon.Remove();
    EXPECT_EQ(taskbar.Kinds().back(), DWORD{NIM_DELETE});
    EXPECT_EQ(taskbar.Requests().size(), 3U);
}

}  // namespace
}  // namespace kvn::service_test

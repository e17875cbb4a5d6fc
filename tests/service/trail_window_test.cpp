// The trail of a stroke over other programs.
#include "service/tray/trail_window.h"

#include <gtest/gtest.h>

#include "platform/device_context.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::service {
namespace {

bool IsShownTrail(HWND window) {
    return test::ClassOf(window) == L"KvnMouseAplTrail" && IsWindowVisible(window);
}

HWND FindTrail() {
    return test::FindTopLevelWindow(IsShownTrail);
}

void HandleMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

TEST(TrailWindowTest, TheTrailTakesNeitherFocusNorClicksAndGoesAtTheEnd) {
    TrailWindow trail;
    trail.Begin({10, 10});
    trail.MoveTo({200, 150});
    const HWND window = FindTrail();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_NE(GetForegroundWindow(), window);
    const auto styles = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
    constexpr DWORD kNeeded = WS_EX_LAYERED | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST;
    EXPECT_EQ(styles & kNeeded, kNeeded);
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_EQ(place.right - place.left, GetSystemMetrics(SM_CXVIRTUALSCREEN));
    EXPECT_EQ(place.bottom - place.top, GetSystemMetrics(SM_CYVIRTUALSCREEN));
    trail.End();
    EXPECT_EQ(FindTrail(), nullptr);
}

TEST(TrailWindowTest, AfterItsEndItStaysHiddenForAMomentForClicksOnTheirWayToIt) {
    TrailWindow trail;
    trail.Begin({10, 10});
    const HWND window = FindTrail();
    trail.End();
    EXPECT_TRUE(IsWindow(window));
    trail.Begin({10, 10});
    EXPECT_NE(FindTrail(), nullptr) << "the next stroke does not wait";
    EXPECT_TRUE(test::ComesTrue([=] {
        HandleMessages();
        return !IsWindow(window);
    }));
    EXPECT_NE(FindTrail(), nullptr);
}

TEST(TrailWindowTest, OnlyItsOwnerClosesIt) {
    TrailWindow trail;
    trail.Begin({10, 10});
    const HWND window = FindTrail();
    ASSERT_NE(window, nullptr);
    SendMessageW(window, WM_CLOSE, 0, 0);
    SendMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_EQ(FindTrail(), window);
}

TEST(TrailWindowTest, TheLineIsDrawnAndSurvivesARepaint) {
    TrailWindow trail;
    trail.Begin({10, 100});
    trail.MoveTo({110, 100});
    const HWND window = FindTrail();
    ASSERT_NE(window, nullptr);
    for (const bool isRepainted : {false, true}) {
        if (isRepainted) RedrawWindow(window, nullptr, nullptr, RDW_ERASE | RDW_INVALIDATE | RDW_UPDATENOW);
        const platform::WindowDeviceContext context(window);
        EXPECT_EQ(GetPixel(context.Get(), 60 - GetSystemMetrics(SM_XVIRTUALSCREEN),
                           100 - GetSystemMetrics(SM_YVIRTUALSCREEN)),
                  platform::kTrailColour)
            << isRepainted;
    }
}

}  // namespace
}  // namespace kvn::service

// The window of "Try the buttons", alone and on its thread.
#include "service/tray/try_window.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include "service/tray/try_buttons.h"
#include "tests/support/list_contents.h"
#include "tests/support/waiting.h"
#include "tests/support/window_messages.h"
#include "tests/support/window_search.h"

namespace kvn::service {
namespace {

bool IsTryWindow(HWND window) {
    return test::ClassOf(window) == kTryWindowClass && IsWindowVisible(window);
}

HWND FindTryWindow() {
    return test::FindTopLevelWindow(IsTryWindow);
}

SIZE SizeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

class TryWindowTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(window.Create());
        window.ComeToFront();
        ASSERT_EQ(GetFocus(), List());
    }

    HWND List() const { return GetDlgItem(window.Handle(), kTryList); }
    HWND Button() const { return GetDlgItem(window.Handle(), IDCANCEL); }
    LONG FontHeight() const {
        LOGFONTW font{};
        GetObjectW(reinterpret_cast<HFONT>(test::Send(List(), WM_GETFONT)), sizeof font, &font);
        return font.lfHeight;
    }
    LONG ColumnWidth() const { return static_cast<LONG>(test::Send(List(), LVM_GETCOLUMNWIDTH, 1)); }
    // Handles a key as the thread's loop does.
    void Press(WPARAM key) const {
        MSG message{GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
        EXPECT_TRUE(window.TakesKey(message));
    }

    TryWindow window;
};

TEST_F(TryWindowTest, TabGoesRoundAndEscCloses) {
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), Button());
    Press(VK_TAB);
    EXPECT_EQ(GetFocus(), List());
    Press(VK_ESCAPE);
    EXPECT_FALSE(window.IsOpen());
    EXPECT_EQ(FindTryWindow(), nullptr);
}

TEST_F(TryWindowTest, EnterClosesOnTheButtonOnly) {
    Press(VK_RETURN);
    EXPECT_TRUE(window.IsOpen());
    Press(VK_TAB);
    Press(VK_RETURN);
    EXPECT_FALSE(window.IsOpen());
}

TEST_F(TryWindowTest, TheControlThatHadTheFocusGetsItAgain) {
    SetFocus(Button());
    test::Send(window.Handle(), WM_ACTIVATE, WA_INACTIVE);
    SetFocus(nullptr);
    test::Send(window.Handle(), WM_ACTIVATE, WA_ACTIVE);
    EXPECT_EQ(GetFocus(), Button());
}

TEST_F(TryWindowTest, TheNewestRowsAreKeptAndTheLastOneIsSeen) {
    constexpr int kPresses = kMostPressesShown + 5;
    for (int press = 1; press <= kPresses; ++press) {
        window.Add({std::to_wstring(press), L"effect", L"profile", L"program.exe"});
    }
    const int last = test::RowCountOf(List()) - 1;
    EXPECT_EQ(last + 1, kMostPressesShown);
    EXPECT_EQ(test::CellText(List(), 0, 0), L"6");
    EXPECT_EQ(test::CellText(List(), last, 0), std::to_wstring(kPresses));
    EXPECT_EQ(test::CellText(List(), last, 1), L"effect");
    EXPECT_EQ(test::CellText(List(), last, 2), L"profile");
    EXPECT_EQ(test::CellText(List(), last, 3), L"program.exe");
    EXPECT_EQ(test::SelectedRowsOf(List()), std::vector{last});
    EXPECT_EQ(test::Send(List(), LVM_GETITEMSTATE, static_cast<WPARAM>(last), LVIS_FOCUSED), LVIS_FOCUSED);
    const LRESULT top = test::Send(List(), LVM_GETTOPINDEX);
    EXPECT_GE(top + test::Send(List(), LVM_GETCOUNTPERPAGE), last + 1);
}

constexpr LONG HalfAsMuchMore(LONG length) {
    return length * 3 / 2;
}

TEST_F(TryWindowTest, EverythingGrowsOnAMonitorOfHigherResolution) {
    const UINT dpi = DpiOf(window.Handle()) * 3 / 2;
    const LONG fontHeight = FontHeight();
    const SIZE button = SizeOf(Button());
    const LONG column = ColumnWidth();
    const SIZE size = SizeOf(window.Handle());
    const RECT place{10, 20, 10 + HalfAsMuchMore(size.cx), 20 + HalfAsMuchMore(size.cy)};
    test::Send(window.Handle(), kDpiChangedMessage, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    EXPECT_NEAR(FontHeight(), HalfAsMuchMore(fontHeight), 1);
    EXPECT_EQ(SizeOf(Button()).cx, HalfAsMuchMore(button.cx));
    EXPECT_EQ(SizeOf(Button()).cy, HalfAsMuchMore(button.cy));
    EXPECT_EQ(SizeOf(window.Handle()).cx, HalfAsMuchMore(size.cx));
    EXPECT_NEAR(ColumnWidth(), HalfAsMuchMore(column), 10);
}

TEST_F(TryWindowTest, TheWindowCannotBecomeTooSmallForItsControls) {
    SetWindowPos(window.Handle(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_GT(SizeOf(List()).cx, 100);
    EXPECT_GT(SizeOf(List()).cy, 30);
}

class TryButtonsTest : public testing::Test {
protected:
    static int RowCount() { return test::RowCountOf(GetDlgItem(FindTryWindow(), kTryList)); }
    void Press() { feed.ReportPress({.control = model::ButtonSlot::Button4, .verdict = Verdict::Pass}, {}); }

    PressFeed feed;
    TryButtons tried{feed,
                     {.nameOfProfile = [](std::uint32_t) { return std::wstring(L"Default"); },
                      .programInFront = [] { return std::wstring(L"C:\\here\\program.exe"); }}};
};

TEST_F(TryButtonsTest, ThereIsOneWindowHoweverOftenItIsOpened) {
    EXPECT_TRUE(tried.Open());
    const HWND first = test::Await("the window", FindTryWindow);
    EXPECT_TRUE(tried.Open());
    const auto isOther = [=](HWND window) { return IsTryWindow(window) && window != first; };
    Press();
    test::Await("the press", [] { return RowCount() == 1; });
    EXPECT_EQ(test::FindTopLevelWindow(isOther), nullptr);
}

TEST_F(TryButtonsTest, MinimizedWindowComesBack) {
    ASSERT_TRUE(tried.Open());
    const HWND window = test::Await("the window", FindTryWindow);
    ShowWindow(window, SW_MINIMIZE);
    test::Await("the minimized window", [=] { return IsIconic(window) != FALSE; });
    EXPECT_TRUE(tried.Open());
    test::Await("the window again", [=] { return IsIconic(window) == FALSE; });
}

TEST_F(TryButtonsTest, OnlyPressesWhileItIsOpenAreListed) {
    Press();
    ASSERT_TRUE(tried.Open());
    const HWND window = test::Await("the window", FindTryWindow);
    Press();
    test::Await("the press", [] { return RowCount() == 1; });
    PostMessageW(window, WM_CLOSE, 0, 0);
    test::Await("the end of the window", [] { return FindTryWindow() == nullptr; });
    test::Await("the end of its watch", [this] {
        SeenPress seen;
        Press();
        return !feed.Take(seen);
    });
    EXPECT_TRUE(tried.Open());
    test::Await("the window", FindTryWindow);
    Press();
    test::Await("the press", [] { return RowCount() == 1; });
}

TEST_F(TryButtonsTest, ItEndsWithItsOwner) {
    {
        TryButtons shortLived(feed, {.nameOfProfile = nullptr, .programInFront = nullptr});
        ASSERT_TRUE(shortLived.Open());
        test::Await("the window", FindTryWindow);
    }
    EXPECT_EQ(FindTryWindow(), nullptr);
}

}  // namespace
}  // namespace kvn::service

// "Try the buttons" beside other programs: every press is listed with its effect, in the language of the user.
#include <windows.h>

#include <commctrl.h>

#include "tests/end_to_end/list_driver.h"
#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/service_end_to_end/pen.h"
#include "tests/service_end_to_end/service_world.h"
#include "tests/support/narrow_text.h"
#include "tests/support/platform.h"
#include "tests/support/window_search.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::WaitFor;
using Row = std::array<std::string, 4>;
using Rows = std::vector<Row>;

constexpr wchar_t kTryClass[] = L"KvnMouseAplTry";
// Below the recorders.
constexpr RECT kPlaceOfWindow{200, 405, 900, 765};
constexpr SIZE kPlainSize{600, 340};

std::string InUsersLanguage(const char* english, const wchar_t* japanese) {
    const bool isJapanese = PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_JAPANESE;
    return isJapanese ? test::Narrow(japanese) : english;
}

HWND TryWindow() {
    const HWND window = FindWindowW(kTryClass, nullptr);
    return window != nullptr && IsWindowVisible(window) ? window : nullptr;
}

class TryingButtonsTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        StartService();
        recorder = &StartRecorder(L"painter");
    }

    void Open() {
        EXPECT_EQ(Ask({L"--try"}), 0U);
        window = WaitFor("the window", TryWindow);
        WaitFor("the window in front", [this] { return GetForegroundWindow() == window; });
        SetWindowPos(window, nullptr, kPlaceOfWindow.left, kPlaceOfWindow.top,
                     kPlaceOfWindow.right - kPlaceOfWindow.left, kPlaceOfWindow.bottom - kPlaceOfWindow.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        list = FindWindowExW(window, nullptr, WC_LISTVIEWW, nullptr);
    }

    // The last row is selected once it is complete.
    Rows ListedRows(std::size_t count) const {
        const end_to_end::ListDriver driver(list);
        const std::vector<int> last{static_cast<int>(count) - 1};
        WaitFor("the rows", [&] { return driver.SelectedRows() == last; });
        return driver.Rows<4>();
    }
    Rows RowsAfterClicks(const std::vector<ButtonSlot>& controls) const {
        const auto before = static_cast<std::size_t>(end_to_end::ListDriver(list).RowCount());
        for (const ButtonSlot control : controls) hands.Click(control);
        Rows rows = ListedRows(before + controls.size());
        rows.erase(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(before));
        return rows;
    }

    Recorder* recorder = nullptr;
    HWND window = nullptr;
    HWND list = nullptr;
    const std::string back = InUsersLanguage("Button 4", L"ボタン 4");
    const std::string wheel = InUsersLanguage("Center button", L"中央ボタン");
};

TEST_F(TryingButtonsTest, PressesThatPassAreListedToo) {
    Open();
    recorder->ComeToFront();
    const std::string program = "painter.exe";
    WaitFor("the recorder as the program in front", [&] { return RowsAfterClicks({kLeft}).front().back() == program; });
    EXPECT_EQ(
        RowsAfterClicks({kLeft, kRight, kWheel, kBack, kForward, kTiltLeft, kTiltRight}),
        (Rows{{InUsersLanguage("Left button", L"左ボタン"), InUsersLanguage("Left click", L"左クリック"), "Default",
               program},
              {InUsersLanguage("Right button", L"右ボタン"), InUsersLanguage("Right click", L"右クリック"), "Default",
               program},
              {wheel, InUsersLanguage("Quick/Auto-scroll", L"クイック/オート スクロール"), "Default", program},
              {back, InUsersLanguage("Back (Internet Explorer)", L"戻る (Internet Explorer)"), "Default", program},
              {InUsersLanguage("Button 5", L"ボタン 5"),
               InUsersLanguage("Forward (Internet Explorer)", L"進む (Internet Explorer)"), "Default", program},
              {InUsersLanguage("Tilt left", L"左チルト"), InUsersLanguage("Left scroll", L"左スクロール"), "Default",
               program},
              {InUsersLanguage("Tilt right", L"右チルト"), InUsersLanguage("Right scroll", L"右スクロール"), "Default",
               program}}));
}

TEST_F(TryingButtonsTest, PressesThatAreKeptAreListedAndActAsAlways) {
    Use({.functions = {{kBack, kCopy}, {kForward, kKeys}, {kRight, kOff}, {kTiltLeft, kMaximize}},
         .keys = {{kForward, L"Left Ctrl+Left Shift+K"}}},
        *recorder);
    Open();
    recorder->ComeToFront();
    recorder->Forget();
    const Rows rows = RowsAfterClicks({kBack, kForward, kRight});
    EXPECT_EQ(rows[0][1], "Ctrl + C");
    EXPECT_EQ(rows[1][1], "Arbitrary key[Left Ctrl+Left Shift+K]");
    EXPECT_EQ(rows[2][1], InUsersLanguage("Off", L"オフ"));
    const Lines arrived = recorder->ArrivedUpTo("sent down K [Shift+Ctrl]");
    ASSERT_FALSE(arrived.empty());
    EXPECT_EQ(arrived.front(), "sent down Ctrl");
    // A program takes posted messages before earlier keys.
    EXPECT_EQ(RowsAfterClicks({kTiltLeft}).front()[1], InUsersLanguage("Maximize the window", L"ウィンドウの最大化"));
    EXPECT_FALSE(recorder->ArrivedUpTo("posted SC_MAXIMIZE").empty());
}

TEST_F(TryingButtonsTest, WindowItselfIsNotTheProgramInFront) {
    end_to_end::ProfileText painting{.name = "Painting", .elements = {{"button4", "38"}}};
    painting.programs.push_back({"painter", test::Narrow(Scratch()) + "painter.exe"});
    end_to_end::WriteFileBytes(ProfileFile(), end_to_end::ProfileFileText({{.name = "Default"}, painting}));
    Announce();
    recorder->ComeToFront();
    WaitFor("the profile", [this] {
        hands.Click(kBack);
        return Status()["profile"] == "Painting";
    });
    Open();
    hands.BringToFront(window);
    hands.MoveTo(end_to_end::MiddleOf(end_to_end::ScreenRectangle(list)));
    const Row offInPainter{back, InUsersLanguage("Off", L"オフ"), "Painting", "painter.exe"};
    EXPECT_EQ(RowsAfterClicks({kBack}), Rows{offInPainter});
    EXPECT_EQ(Status()["profile"], "Painting");

    Recorder& other = StartRecorder(L"writer");
    other.ComeToFront();
    Row last;
    WaitFor("the other program", [&] {
        last = RowsAfterClicks({kBack}).back();
        return last[3] == "writer.exe" && last[2] == "Default";
    });
    EXPECT_EQ(last[1], InUsersLanguage("Back (Internet Explorer)", L"戻る (Internet Explorer)"));
}

TEST_F(TryingButtonsTest, GesturesAreNamedWhenTheyAreDrawn) {
    Use({.functions = {{kWheel, kGesture}}, .gestures = {L"R\t10\tcopy\t"}}, *recorder, kForward);
    Open();
    recorder->ComeToFront();
    Pen pen{hands};
    for (const char* const letters : {"R", "D"}) {
        pen.MoveTo({60, 90});
        hands.Press(kWheel);
        WaitForTrail();
        pen.Draw(letters);
        hands.Release(kWheel);
        pen.WaitUntilTrailHasGone();
    }
    const std::string begun = InUsersLanguage("Gesture function", L"ジェスチャ機能");
    const Rows rows = ListedRows(4);
    EXPECT_EQ(rows[0][0], wheel);
    EXPECT_EQ(rows[0][1], begun);
    EXPECT_EQ(rows[1][1], InUsersLanguage("Gesture R: Ctrl + C", L"ジェスチャ R: Ctrl + C"));
    EXPECT_EQ(rows[2][1], begun);
    EXPECT_EQ(rows[3][1], InUsersLanguage("Gesture D: not registered", L"ジェスチャ D: 登録されていません"));
}

TEST_F(TryingButtonsTest, PausedPressesAreMarked) {
    Use({.functions = {{kBack, kCopy}}}, *recorder);
    Open();
    EXPECT_EQ(Ask({L"--pause"}), 0U);
    recorder->ComeToFront();
    EXPECT_EQ(RowsAfterClicks({kBack})[0][1],
              InUsersLanguage("Back (Internet Explorer) (paused)", L"戻る (Internet Explorer) (一時停止中)"));
}

TEST_F(TryingButtonsTest, EscClosesAndASecondStartComesToTheSameWindow) {
    Open();
    EXPECT_EQ(test::Narrow(test::TextOf(window)), InUsersLanguage("Try the buttons", L"ボタンを試す"));
    recorder->ComeToFront();
    EXPECT_EQ(Ask({L"--try"}), 0U);
    WaitFor("the window in front", [this] { return GetForegroundWindow() == window; });
    EXPECT_EQ(TryWindow(), window);
    hands.BringToFront(window);
    hands.PressKey("Escape");
    WaitFor("the end of the window", [] { return TryWindow() == nullptr; });
    recorder->ComeToFront();
    recorder->Forget();
    hands.Click(kRight);
    Lines arrived = recorder->ArrivedUpTo("real right up");
    std::erase(arrived, "real up Esc");  // its press went to the window
    EXPECT_EQ(arrived, (Lines{"real right down", "real right up"}));
    Open();
    recorder->ComeToFront();
    EXPECT_EQ(RowsAfterClicks({kRight}).size(), 1U);
}

// The resolution of the display, for programs that start during a test.
class Resolution {
public:
    explicit Resolution(DWORD dpi) { RegSetKeyValueW(HKEY_CURRENT_USER, kKey, kValue, REG_DWORD, &dpi, sizeof dpi); }
    ~Resolution() { RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, kValue); }
    Resolution(const Resolution&) = delete;
    Resolution& operator=(const Resolution&) = delete;

private:
    static constexpr wchar_t kKey[] = L"Control Panel\\Desktop";
    static constexpr wchar_t kValue[] = L"LogPixels";
};

TEST_F(TryingButtonsTest, WindowGrowsWithTheResolution) {
    if (test::SessionKeepsItsResolution()) GTEST_SKIP() << "Wine 10 asks for the resolution once in a session";
    EXPECT_EQ(Ask({L"--quit"}), 0U);
    const Resolution high(144);
    StartService();
    EXPECT_EQ(Ask({L"--try"}), 0U);
    const RECT place = end_to_end::ScreenRectangle(WaitFor("the window", TryWindow));
    EXPECT_EQ(place.right - place.left, kPlainSize.cx * 3 / 2);
    EXPECT_EQ(place.bottom - place.top, kPlainSize.cy * 3 / 2);
}

}  // namespace
}  // namespace kvn::service_end_to_end

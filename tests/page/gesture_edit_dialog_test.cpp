// The dialog "Edit gesture".
#include "platform/device_context.h"
#include "tests/support/gesture_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using namespace std::string_literals;
using platform::ServiceMessage;

class GestureEditDialogTest : public GestureTest {
protected:
    static std::wstring Memo(HWND editor) { return TextOf(GetDlgItem(editor, IDC_GESTURE_MEMO)); }
    static HWND Functions(HWND editor) { return GetDlgItem(editor, IDC_GESTURE_FUNCTION); }
};

TEST_F(GestureEditDialogTest, IsADialogAboveTheSheet) {
    OpenWith({});
    const HWND editor = OpenEditor();
    EXPECT_EQ(GetWindow(editor, GW_OWNER), sheet->Sheet());
    EXPECT_FALSE(IsWindowEnabled(sheet->Sheet()));
    EXPECT_EQ(Stroke(editor), L"");
    EXPECT_EQ(Memo(editor), L"");
    EXPECT_EQ(SelectedData(Functions(editor)), std::nullopt);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, TheServiceKnowsWhenItOpensAndCloses) {
    OpenWith({});
    const std::size_t before = service->Calls().size();
    CloseEditor(OpenEditor(), IDCANCEL);
    const std::vector<ServiceCall> all = service->Calls();
    EXPECT_EQ((std::vector<ServiceCall>{all.begin() + static_cast<std::ptrdiff_t>(before), all.end()}),
              (std::vector<ServiceCall>{{NumberOf(ServiceMessage::GestureEditBegin), 0, 0, true},
                                        {NumberOf(ServiceMessage::GestureEditEnd), 0, 0, false}}));
}

TEST_F(GestureEditDialogTest, TheServiceIsNotifiedBeforeTheControlsAreFilled) {
    OpenWith({});
    LRESULT countWhenTold = -1;
    service->WhenCalled(ServiceMessage::GestureEditBegin, [&] {
        const HWND editor = FindTopLevelWindow([](HWND window) { return TitleOf(window) == kEditorTitle; });
        SendMessageTimeoutW(Functions(editor), CB_GETCOUNT, 0, 0, SMTO_NORMAL, kPatienceMilliseconds,
                            reinterpret_cast<PDWORD_PTR>(&countWhenTold));
    });
    CloseEditor(OpenEditor(), IDCANCEL);
    EXPECT_EQ(countWhenTold, 0);
}

TEST_F(GestureEditDialogTest, OpensWithoutTheService) {
    OpenWith({});
    service.reset();
    CloseEditor(OpenEditor(), IDCANCEL);
}

TEST_F(GestureEditDialogTest, OffersEveryFunctionButGestureAndOff) {
    OpenWith({});
    const HWND editor = OpenEditor();
    std::vector<int> expected;
    for (int code = 1; code <= 34; ++code) expected.push_back(code);
    expected.push_back(37);
    EXPECT_EQ(DataOf(Functions(editor)), expected);
    EXPECT_EQ(EntriesOf(Functions(editor)).front().text, L"Left click");
    EXPECT_EQ(EntriesOf(Functions(editor)).back().text, L"Arbitrary key");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, TheStrokeFieldHasTheColoursOfAWindow) {
    OpenWith({});
    const HWND editor = OpenEditor();
    LRESULT brush = 0;
    COLORREF ground = 0;
    COLORREF text = 0;
    const auto ask = [&](int control) {
        sheet->Run([&] {
            const HWND window = GetDlgItem(editor, control);
            const platform::WindowDeviceContext context(window);
            brush = SendMessageW(editor, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context.Get()),
                                 reinterpret_cast<LPARAM>(window));
            ground = GetBkColor(context.Get());
            text = GetTextColor(context.Get());
        });
    };
    ask(IDC_GESTURE_STROKE);
    EXPECT_EQ(brush, reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW)));
    EXPECT_EQ(ground, GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(text, GetSysColor(COLOR_WINDOWTEXT));
    ask(-1);
    EXPECT_NE(brush, reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW)));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, AddedGesturesAreShownAppliedAndReadBack) {
    OpenWith(kTwoGestures);
    const HWND editor = OpenEditor();
    Record(editor, "RU");
    EXPECT_EQ(Stroke(editor), L"RU");
    ChooseFunction(editor, 22);
    TypeMemo(editor, L"away with it");
    CloseEditor(editor, IDOK);
    ASSERT_EQ(RowCount(), 3);
    EXPECT_EQ(Row(2), (RowTexts{L"RU", L"Delete", L"away with it"}));
    EXPECT_TRUE(sheet->IsApplyEnabled());
    ApplySuccessfully();
    EXPECT_EQ(StoredGestures(),
              StoredList(L"U\t3\tone page back\t\0RD\t37\tpaste\tLeft Ctrl+V\0RU\t22\taway with it\t\0\0"s));
    Close();
    Open();
    ASSERT_EQ(RowCount(), 3);
    EXPECT_EQ(Row(2), (RowTexts{L"RU", L"Delete", L"away with it"}));
}

TEST_F(GestureEditDialogTest, NothingIsStoredBeforeApply) {
    OpenWith(kTwoGestures);
    const std::string before = ReadFileText(ProfilePath());
    const HWND editor = OpenEditor();
    Record(editor, "D");
    ChooseFunction(editor, 1);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(ReadFileText(ProfilePath()), before);
    EXPECT_EQ(ModelValues().count(L"Gesture"), 0U);
}

TEST_F(GestureEditDialogTest, CancelChangesNothing) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(0);
    Record(editor, "D");
    ChooseFunction(editor, 1);
    TypeMemo(editor, L"else");
    CloseEditor(editor, IDCANCEL);
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(Row(0), (RowTexts{L"U", L"Back (Internet Explorer)", L"one page back"}));
    ApplySuccessfully();
    EXPECT_NE(ReadFileText(ProfilePath()).find("one page back"), std::string::npos);
}

TEST_F(GestureEditDialogTest, OkIsIgnoredWithoutStrokeOrFunction) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ExpectOkIgnored(editor);
    ChooseFunction(editor, 1);
    ExpectOkIgnored(editor);
    SendDlgItemMessageW(editor, IDC_GESTURE_FUNCTION, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    Record(editor, "L");
    ExpectOkIgnored(editor);
    CloseEditor(editor, IDCANCEL);
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(GestureEditDialogTest, OkIsIgnoredWhileAStrokeIsAwaitedOrDrawn) {
    OpenWith({});
    const HWND editor = OpenEditor();
    ChooseFunction(editor, 1);
    ClickStroke(editor);
    ExpectOkIgnored(editor);
    HoldGestureButton(editor);
    Draw(editor, "R");
    ExpectOkIgnored(editor);
    ReleaseGestureButton(editor);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(RowCount(), 1);
}

TEST_F(GestureEditDialogTest, AStrokeThatIsThereAlreadyIsNotAdded) {
    OpenWith({{"R", 3, "", ""}});
    const HWND editor = OpenEditor();
    ChooseFunction(editor, 1);
    Record(editor, "R");
    PostMessageW(GetDlgItem(editor, IDOK), BM_CLICK, 0, 0);
    ExpectWarning(AnswerMessageBox("the duplicate", IDOK), L"This gesture is already registered.");
    EXPECT_TRUE(IsWindowVisible(editor));
    Record(editor, "RL");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(GestureEditDialogTest, StrokesAreComparedExactly) {
    OpenWith({{"r", 3, "", ""}, {"RR", 3, "", ""}});
    const HWND editor = OpenEditor();
    ChooseFunction(editor, 1);
    Record(editor, "R");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(GestureEditDialogTest, EditShowsTheGestureAndReplacesIt) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(0);
    EXPECT_EQ(Stroke(editor), L"U");
    EXPECT_EQ(Memo(editor), L"one page back");
    EXPECT_EQ(SelectedData(Functions(editor)), 3);
    TypeMemo(editor, L"back");
    ChooseFunction(editor, 4);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(Row(0), (RowTexts{L"U", L"Forward (Internet Explorer)", L"back"}));
    ApplySuccessfully();
    EXPECT_EQ(StoredGestures(), StoredList(L"U\t4\tback\t\0RD\t37\tpaste\tLeft Ctrl+V\0\0"s));
}

TEST_F(GestureEditDialogTest, AnEditedStrokeMayEqualAnother) {
    OpenWith({{"U", 3, "", ""}, {"R", 4, "", ""}});
    const HWND editor = EditRow(0);
    Record(editor, "R");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(Row(0)[0], L"R");
    EXPECT_EQ(Row(1)[0], L"R");
}

TEST_F(GestureEditDialogTest, AFunctionThatIsNotOfferedIsShownAsNone) {
    OpenWith({{"U", 36, "", ""}});
    const HWND editor = EditRow(0);
    EXPECT_EQ(SelectedData(Functions(editor)), std::nullopt);
    ExpectOkIgnored(editor);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, OfSeveralSelectedRowsTheFirstIsEdited) {
    OpenWith(kTwoGestures);
    SelectRow(0);
    const HWND editor = EditRow(1);
    EXPECT_EQ(Stroke(editor), L"U");
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, MemosAreCutButNeverInsideACharacter) {
    OpenWith({{"U", 3, "", ""}});
    HWND editor = EditRow(0);
    TypeMemo(editor, std::wstring(600, L'm'));
    CloseEditor(editor, IDOK);
    EXPECT_EQ(Row(0)[2], std::wstring(512, L'm'));
    editor = OpenEditor(IDC_GESTURES_EDIT);
    TypeMemo(editor, std::wstring(511, L'm') + L"\U0001F642\U0001F642");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(Row(0)[2], std::wstring(511, L'm'));
}

TEST_F(GestureEditDialogTest, AnAcceptedGestureIsFollowedByOneLeftClick) {
    OpenWith({});
    CloseEditor(OpenEditor(), IDCANCEL);
    EXPECT_TRUE(clicks.empty());
    const HWND editor = OpenEditor();
    Record(editor, "D");
    ChooseFunction(editor, 1);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(clicks, (std::vector<DWORD>{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}));
}

TEST_F(GestureEditDialogTest, AnotherProfilesStrokeMayBeAdded) {
    WriteProfiles({GestureProfile({}), GestureProfile({{"R", 3, "", ""}}, "Games")});
    Open();
    const HWND editor = OpenEditor();
    Record(editor, "R");
    ChooseFunction(editor, 1);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(RowCount(), 1);
}

TEST_F(GestureEditDialogTest, AGestureThatIsNoLongerThereIsNotReplaced) {
    WriteProfiles({GestureProfile(kTwoGestures), GestureProfile({{"R", 3, "", ""}}, "Games")});
    Open();
    const HWND editor = EditRow(1);
    ChooseProfile(1);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(RowCount(), 1);
    ChooseProfile(0);
    EXPECT_EQ(Row(1), (RowTexts{L"RD", L"Left Ctrl+V", L"paste"}));
}

TEST_F(GestureEditDialogTest, EscCancels) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(0);
    PostMessageW(GetDlgItem(editor, IDC_GESTURE_MEMO), WM_KEYDOWN, VK_ESCAPE, 1);
    Await("the end of the gesture editor", [=] { return !IsWindow(editor); });
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(GestureEditDialogTest, TheNoteScrollsSideways) {
    OpenWith({});
    const HWND editor = OpenEditor();
    EXPECT_NE(GetWindowLongW(GetDlgItem(editor, IDC_GESTURE_MEMO), GWL_STYLE) & ES_AUTOHSCROLL, 0);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, TheCursorIsSampledEveryTenthOfASecond) {
    std::vector<std::pair<UINT_PTR, UINT>> timers;
    const ReplacedImport<"SetTimer", UINT_PTR(HWND, UINT_PTR, UINT, TIMERPROC)> timer(
        module.Handle(), [&](HWND, UINT_PTR id, UINT interval, TIMERPROC procedure) -> UINT_PTR {
            EXPECT_EQ(procedure, nullptr);
            timers.emplace_back(id, interval);
            return id;
        });
    ASSERT_TRUE(timer.IsInPlace());
    OpenWith({});
    const HWND editor = OpenEditor();
    EXPECT_EQ(timers, (std::vector<std::pair<UINT_PTR, UINT>>{{221, 100}}));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, TheDialogEndsBeforeTheClickIsMade) {
    OpenWith({});
    const HWND editor = OpenEditor();
    Record(editor, "U");
    ChooseFunction(editor, 5);
    std::vector<DWORD> clicksBefore{1};
    {
        const ReplacedImport<"EndDialog", decltype(EndDialog)> end(module.Handle(), [&](HWND dialog, INT_PTR result) {
            clicksBefore = clicks;
            return EndDialog(dialog, result);
        });
        ASSERT_TRUE(end.IsInPlace());
        CloseEditor(editor, IDOK);
    }
    EXPECT_TRUE(clicksBefore.empty());
    EXPECT_EQ(clicks.size(), 2U);
}

TEST_F(GestureEditDialogTest, ItsEndHasTheWholeSheetPaintedAgainWithoutErasing) {
    struct Invalidation {
        HWND window;
        const RECT* area;
        WINBOOL erases;
        bool operator==(const Invalidation&) const = default;
    };
    OpenWith({});
    const HWND editor = OpenEditor();
    std::vector<Invalidation> invalidations;
    const ReplacedImport<"InvalidateRect", decltype(InvalidateRect)> invalidate(
        module.Handle(), [&](HWND window, const RECT* area, WINBOOL erases) -> WINBOOL {
            invalidations.push_back({window, area, erases});
            return TRUE;
        });
    ASSERT_TRUE(invalidate.IsInPlace());
    CloseEditor(editor, IDCANCEL);
    EXPECT_EQ(invalidations, (std::vector<Invalidation>{{sheet->Sheet(), nullptr, FALSE}}));
}

}  // namespace
}  // namespace kvn::test

// The dialog "Edit gesture".
#include "tests/page/gesture_test.h"
#include "tests/support/key_dialog.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using namespace std::string_literals;
using platform::ServiceMessage;

const std::vector<GestureText> kTwoGestures{{"U", 3, "one page back", ""}, {"RD", 37, "paste", "Left Ctrl+V"}};

class GestureEditDialogTest : public GestureTest {
protected:
    static std::wstring Memo(HWND editor) { return TextOf(GetDlgItem(editor, IDC_GESTURE_MEMO)); }
    static HWND Functions(HWND editor) { return GetDlgItem(editor, IDC_GESTURE_FUNCTION); }

    HWND EditRow(int row) const {
        SelectRow(row);
        return OpenEditor(IDC_GESTURES_EDIT);
    }
    // Chooses "Arbitrary key" and enters one key in the dialog that opens.
    void ChooseKey(HWND editor, const std::wstring& name, int button = IDC_KEYS_OK) const {
        ChooseFunction(editor, 37);
        const HWND keys = AwaitKeyDialog();
        EnterKey(keys, IDC_KEYS_INPUT2, name);
        CloseKeyDialog(keys, button);
        sheet->Settle();
    }
    StoredValue StoredGestures() const { return ModelValues().at(L"Gesture"); }
};

TEST_F(GestureEditDialogTest, IsADialogAboveTheSheet) {
    OpenWith({});
    const HWND editor = OpenEditor();
    EXPECT_EQ(sheet->Sheet(), GetWindow(editor, GW_OWNER));
    EXPECT_FALSE(IsWindowEnabled(sheet->Sheet()));
    EXPECT_EQ(L"", Stroke(editor));
    EXPECT_EQ(L"", Memo(editor));
    EXPECT_EQ(std::nullopt, SelectedData(Functions(editor)));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, TheServiceKnowsWhenItOpensAndCloses) {
    OpenWith({});
    const std::size_t before = service->Calls().size();
    CloseEditor(OpenEditor(), IDCANCEL);
    Await("the end notice", [this] { return service->CountOf(ServiceMessage::GestureEditEnd) == 1; });
    const std::vector<ServiceCall> all = service->Calls();
    EXPECT_EQ((std::vector<ServiceCall>{{32773, 0, 0, true}, {32774, 0, 0, false}}),
              (std::vector<ServiceCall>{all.begin() + static_cast<std::ptrdiff_t>(before), all.end()}));
}

TEST_F(GestureEditDialogTest, TheServiceIsToldBeforeTheControlsAreFilled) {
    OpenWith({});
    LRESULT countWhenTold = -1;
    service->WhenCalled(ServiceMessage::GestureEditBegin, [&] {
        const HWND editor = FindTopLevelWindow([](HWND window) { return TitleOf(window) == L"Edit gesture"; });
        SendMessageTimeoutW(Functions(editor), CB_GETCOUNT, 0, 0, SMTO_NORMAL, 2000,
                            reinterpret_cast<PDWORD_PTR>(&countWhenTold));
    });
    CloseEditor(OpenEditor(), IDCANCEL);
    EXPECT_EQ(0, countWhenTold);
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
    EXPECT_EQ(expected, DataOf(Functions(editor)));
    EXPECT_EQ(L"Left click", EntriesOf(Functions(editor)).front().text);
    EXPECT_EQ(L"Arbitrary key", EntriesOf(Functions(editor)).back().text);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, TheStrokeFieldHasTheColoursOfAWindow) {
    OpenWith({});
    const HWND editor = OpenEditor();
    const auto brushFor = [&](int control) {
        LRESULT brush = 0;
        sheet->Run([&] {
            const HWND window = GetDlgItem(editor, control);
            const HDC context = GetDC(window);
            brush = SendMessageW(editor, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                                 reinterpret_cast<LPARAM>(window));
            ReleaseDC(window, context);
        });
        return brush;
    };
    EXPECT_EQ(reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW)), brushFor(IDC_GESTURE_STROKE));
    EXPECT_NE(reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW)), brushFor(-1));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, AddedGesturesAreShownAppliedAndReadBack) {
    OpenWith(kTwoGestures);
    const HWND editor = OpenEditor();
    Record(editor, "RU");
    EXPECT_EQ(L"RU", Stroke(editor));
    ChooseFunction(editor, 22);
    TypeMemo(editor, L"away with it");
    CloseEditor(editor, IDOK);
    ASSERT_EQ(3, RowCount());
    EXPECT_EQ((RowTexts{L"RU", L"Delete", L"away with it"}), Row(2));
    EXPECT_TRUE(sheet->IsApplyEnabled());
    ApplySuccessfully();
    EXPECT_EQ(StoredList(L"U\t3\tone page back\t\0RD\t37\tpaste\tLeft Ctrl+V\0RU\t22\taway with it\t\0\0"s),
              StoredGestures());
    Close();
    Open();
    ASSERT_EQ(3, RowCount());
    EXPECT_EQ((RowTexts{L"RU", L"Delete", L"away with it"}), Row(2));
}

TEST_F(GestureEditDialogTest, NothingIsStoredBeforeApply) {
    OpenWith(kTwoGestures);
    const std::string before = ReadFileText(ProfilePath());
    const HWND editor = OpenEditor();
    Record(editor, "D");
    ChooseFunction(editor, 1);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(before, ReadFileText(ProfilePath()));
    EXPECT_EQ(0U, ModelValues().count(L"Gesture"));
}

TEST_F(GestureEditDialogTest, CancelChangesNothing) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(0);
    Record(editor, "D");
    ChooseFunction(editor, 1);
    TypeMemo(editor, L"else");
    CloseEditor(editor, IDCANCEL);
    EXPECT_EQ(2, RowCount());
    EXPECT_EQ((RowTexts{L"U", L"Back (Internet Explorer)", L"one page back"}), Row(0));
    ApplySuccessfully();
    EXPECT_NE(std::string::npos, ReadFileText(ProfilePath()).find("one page back"));
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
    EXPECT_EQ(0, RowCount());
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
    EXPECT_EQ(1, RowCount());
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
    EXPECT_EQ(2, RowCount());
}

TEST_F(GestureEditDialogTest, StrokesAreComparedExactly) {
    OpenWith({{"r", 3, "", ""}, {"RR", 3, "", ""}});
    const HWND editor = OpenEditor();
    ChooseFunction(editor, 1);
    Record(editor, "R");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(3, RowCount());
}

TEST_F(GestureEditDialogTest, EditShowsTheGestureAndReplacesIt) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(0);
    EXPECT_EQ(L"U", Stroke(editor));
    EXPECT_EQ(L"one page back", Memo(editor));
    EXPECT_EQ(3, SelectedData(Functions(editor)));
    TypeMemo(editor, L"back");
    ChooseFunction(editor, 4);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(2, RowCount());
    EXPECT_EQ((RowTexts{L"U", L"Forward (Internet Explorer)", L"back"}), Row(0));
    ApplySuccessfully();
    EXPECT_EQ(StoredList(L"U\t4\tback\t\0RD\t37\tpaste\tLeft Ctrl+V\0\0"s), StoredGestures());
}

TEST_F(GestureEditDialogTest, AnEditedStrokeMayEqualAnother) {
    OpenWith({{"U", 3, "", ""}, {"R", 4, "", ""}});
    const HWND editor = EditRow(0);
    Record(editor, "R");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(L"R", Row(0)[0]);
    EXPECT_EQ(L"R", Row(1)[0]);
}

TEST_F(GestureEditDialogTest, AFunctionThatIsNotOfferedIsShownAsNone) {
    OpenWith({{"U", 36, "", ""}});
    const HWND editor = EditRow(0);
    EXPECT_EQ(std::nullopt, SelectedData(Functions(editor)));
    ExpectOkIgnored(editor);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, OfSeveralSelectedRowsTheFirstIsEdited) {
    OpenWith(kTwoGestures);
    SelectRow(0);
    const HWND editor = EditRow(1);
    EXPECT_EQ(L"U", Stroke(editor));
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, ArbitraryKeysStandInBracketsUntilTheProfileIsShownAgain) {
    WriteProfiles({GestureProfile({}), GestureProfile({}, "Games")});
    Open();
    const HWND editor = OpenEditor();
    Record(editor, "D");
    ChooseKey(editor, L"Left Ctrl");
    EXPECT_EQ(L"Arbitrary key[Left Ctrl]", SelectedText(Functions(editor)));
    EXPECT_EQ(37, SelectedData(Functions(editor)));
    CloseEditor(editor, IDOK);
    EXPECT_EQ((RowTexts{L"D", L"Arbitrary key[Left Ctrl]", L""}), Row(0));
    ChooseProfile(1);
    ChooseProfile(0);
    EXPECT_EQ((RowTexts{L"D", L"Left Ctrl", L""}), Row(0));
    ApplySuccessfully();
    EXPECT_EQ(StoredList(L"D\t37\t\tLeft Ctrl\0\0"s), StoredGestures());
}

TEST_F(GestureEditDialogTest, CancelledKeysKeepTheEntryAndItsText) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    EXPECT_EQ(L"Arbitrary key[Left Ctrl+V]", SelectedText(Functions(editor)));
    ChooseKey(editor, L"A", IDC_KEYS_CANCEL);
    EXPECT_EQ(L"Arbitrary key[Left Ctrl+V]", SelectedText(Functions(editor)));
    CloseEditor(editor, IDOK);
    EXPECT_EQ((RowTexts{L"RD", L"Arbitrary key[Left Ctrl+V]", L"paste"}), Row(1));
}

TEST_F(GestureEditDialogTest, TheKeyDialogOpensWithTheKeysAndOffersShift) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    ChooseFunction(editor, 37);
    const HWND keys = AwaitKeyDialog();
    EXPECT_EQ(editor, GetWindow(keys, GW_OWNER));
    EXPECT_EQ(L"Left Ctrl", TextOf(GetDlgItem(keys, IDC_KEYS_INPUT1)));
    EXPECT_EQ(L"V", TextOf(GetDlgItem(keys, IDC_KEYS_INPUT2)));
    EXPECT_NE(CB_ERR, SendDlgItemMessageW(keys, IDC_KEYS_INPUT1, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                          reinterpret_cast<LPARAM>(L"Left Shift")));
    CloseKeyDialog(keys, IDC_KEYS_CANCEL);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogTest, ClearedKeysLeaveThePlainEntry) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    ChooseFunction(editor, 37);
    const HWND keys = AwaitKeyDialog();
    SendMessageW(GetDlgItem(keys, IDC_KEYS_CLEAR), BM_CLICK, 0, 0);
    CloseKeyDialog(keys, IDC_KEYS_OK);
    sheet->Settle();
    EXPECT_EQ(L"Arbitrary key", SelectedText(Functions(editor)));
    CloseEditor(editor, IDOK);
    ApplySuccessfully();
    EXPECT_EQ(StoredList(L"U\t3\tone page back\t\0RD\t37\tpaste\t\0\0"s), StoredGestures());
}

TEST_F(GestureEditDialogTest, AnotherFunctionDropsTheKeys) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    ChooseFunction(editor, 12);
    CloseEditor(editor, IDOK);
    ApplySuccessfully();
    EXPECT_EQ(StoredList(L"U\t3\tone page back\t\0RD\t12\tpaste\t\0\0"s), StoredGestures());
}

TEST_F(GestureEditDialogTest, MemosAreCutButNeverInsideACharacter) {
    OpenWith({{"U", 3, "", ""}});
    HWND editor = EditRow(0);
    TypeMemo(editor, std::wstring(600, L'm'));
    CloseEditor(editor, IDOK);
    EXPECT_EQ(std::wstring(512, L'm'), Row(0)[2]);
    editor = OpenEditor(IDC_GESTURES_EDIT);
    TypeMemo(editor, std::wstring(511, L'm') + L"\U0001F642\U0001F642");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(std::wstring(511, L'm'), Row(0)[2]);
}

TEST_F(GestureEditDialogTest, AnAcceptedGestureIsFollowedByOneLeftClick) {
    OpenWith({});
    std::vector<DWORD> events;
    const ReplacedImport<"mouse_event", void(DWORD, DWORD, DWORD, DWORD, ULONG_PTR)> recorded(
        module.Handle(), [&](DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR /*extra*/) {
            EXPECT_EQ(0U, x + y + data);
            events.push_back(flags);
        });
    ASSERT_TRUE(recorded.IsInPlace());
    CloseEditor(OpenEditor(), IDCANCEL);
    EXPECT_TRUE(events.empty());
    const HWND editor = OpenEditor();
    Record(editor, "D");
    ChooseFunction(editor, 1);
    CloseEditor(editor, IDOK);
    EXPECT_EQ((std::vector<DWORD>{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}), events);
}

}  // namespace
}  // namespace kvn::test

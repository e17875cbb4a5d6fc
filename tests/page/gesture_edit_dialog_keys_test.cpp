// The function "Arbitrary key" in the gesture editor.
#include "tests/support/gesture_fixture.h"
#include "tests/support/key_dialog.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

using namespace std::string_literals;

class GestureEditDialogKeysTest : public GestureTest {
protected:
    static HWND Functions(HWND editor) { return GetDlgItem(editor, IDC_GESTURE_FUNCTION); }

    // Chooses "Arbitrary key" and enters one key in the dialog that opens.
    void ChooseKey(HWND editor, const std::wstring& name, int button = IDC_KEYS_OK) const {
        ChooseFunction(editor, 37);
        const HWND keys = AwaitKeyDialog();
        EnterKey(keys, IDC_KEYS_INPUT2, name);
        CloseKeyDialog(keys, button);
        sheet->Settle();
    }
};

TEST_F(GestureEditDialogKeysTest, ArbitraryKeysAreInBracketsUntilTheProfileIsShownAgain) {
    WriteProfiles({GestureProfile({}), GestureProfile({}, "Games")});
    Open();
    const HWND editor = OpenEditor();
    Record(editor, "D");
    ChooseKey(editor, L"Left Ctrl");
    EXPECT_EQ(SelectedText(Functions(editor)), L"Arbitrary key[Left Ctrl]");
    EXPECT_EQ(SelectedData(Functions(editor)), 37);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(Row(0), (RowTexts{L"D", L"Arbitrary key[Left Ctrl]", L""}));
    ChooseProfile(1);
    ChooseProfile(0);
    EXPECT_EQ(Row(0), (RowTexts{L"D", L"Left Ctrl", L""}));
    ApplySuccessfully();
    EXPECT_EQ(StoredGestures(), StoredList(L"D\t37\t\tLeft Ctrl\0\0"s));
}

TEST_F(GestureEditDialogKeysTest, CancelledKeysKeepTheEntryAndItsText) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    EXPECT_EQ(SelectedText(Functions(editor)), L"Arbitrary key[Left Ctrl+V]");
    ChooseKey(editor, L"A", IDC_KEYS_CANCEL);
    EXPECT_EQ(SelectedText(Functions(editor)), L"Arbitrary key[Left Ctrl+V]");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(Row(1), (RowTexts{L"RD", L"Arbitrary key[Left Ctrl+V]", L"paste"}));
}

TEST_F(GestureEditDialogKeysTest, TheKeyDialogOpensWithTheKeysAndOffersShift) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    ChooseFunction(editor, 37);
    const HWND keys = AwaitKeyDialog();
    EXPECT_EQ(GetWindow(keys, GW_OWNER), editor);
    EXPECT_EQ(TextOf(GetDlgItem(keys, IDC_KEYS_INPUT1)), L"Left Ctrl");
    EXPECT_EQ(TextOf(GetDlgItem(keys, IDC_KEYS_INPUT2)), L"V");
    EXPECT_NE(SendDlgItemMessageW(keys, IDC_KEYS_INPUT1, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                  reinterpret_cast<LPARAM>(L"Left Shift")),
              CB_ERR);
    CloseKeyDialog(keys, IDC_KEYS_CANCEL);
    CloseEditor(editor, IDCANCEL);
}

TEST_F(GestureEditDialogKeysTest, ClearedKeysLeaveThePlainEntry) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    ChooseFunction(editor, 37);
    const HWND keys = AwaitKeyDialog();
    SendMessageW(GetDlgItem(keys, IDC_KEYS_CLEAR), BM_CLICK, 0, 0);
    CloseKeyDialog(keys, IDC_KEYS_OK);
    sheet->Settle();
    EXPECT_EQ(SelectedText(Functions(editor)), L"Arbitrary key");
    CloseEditor(editor, IDOK);
    ApplySuccessfully();
    EXPECT_EQ(StoredGestures(), StoredList(L"U\t3\tone page back\t\0RD\t37\tpaste\t\0\0"s));
}

TEST_F(GestureEditDialogKeysTest, AnotherFunctionDropsTheKeys) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    ChooseFunction(editor, 12);
    CloseEditor(editor, IDOK);
    ApplySuccessfully();
    EXPECT_EQ(StoredGestures(), StoredList(L"U\t3\tone page back\t\0RD\t12\tpaste\t\0\0"s));
}

}  // namespace
}  // namespace kvn::test

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

TEST_F(GestureEditDialogKeysTest, ArbitraryKeysStandInBracketsUntilTheProfileIsShownAgain) {
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

TEST_F(GestureEditDialogKeysTest, CancelledKeysKeepTheEntryAndItsText) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    EXPECT_EQ(L"Arbitrary key[Left Ctrl+V]", SelectedText(Functions(editor)));
    ChooseKey(editor, L"A", IDC_KEYS_CANCEL);
    EXPECT_EQ(L"Arbitrary key[Left Ctrl+V]", SelectedText(Functions(editor)));
    CloseEditor(editor, IDOK);
    EXPECT_EQ((RowTexts{L"RD", L"Arbitrary key[Left Ctrl+V]", L"paste"}), Row(1));
}

TEST_F(GestureEditDialogKeysTest, TheKeyDialogOpensWithTheKeysAndOffersShift) {
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

TEST_F(GestureEditDialogKeysTest, ClearedKeysLeaveThePlainEntry) {
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

TEST_F(GestureEditDialogKeysTest, AnotherFunctionDropsTheKeys) {
    OpenWith(kTwoGestures);
    const HWND editor = EditRow(1);
    ChooseFunction(editor, 12);
    CloseEditor(editor, IDOK);
    ApplySuccessfully();
    EXPECT_EQ(StoredList(L"U\t3\tone page back\t\0RD\t12\tpaste\t\0\0"s), StoredGestures());
}

}  // namespace
}  // namespace kvn::test

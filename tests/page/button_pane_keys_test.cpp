// The function "Arbitrary key" in the button settings pane.
#include <windows.h>

#include "tests/support/key_dialog.h"
#include "tests/support/page_fixture.h"

namespace kvn::test {
namespace {

class ButtonPaneKeysTest : public PageTest {
protected:
    void Finish(HWND dialog, int button) const {
        CloseKeyDialog(dialog, button);
        EXPECT_TRUE(sheet->IsQuiet());
    }
    std::wstring ArbitraryKeyText(int control) const {
        const HWND combo = sheet->PaneControl(control);
        return EntriesOf(combo)[static_cast<std::size_t>(IndexOfData(combo, 37))].text;
    }
};

TEST_F(ButtonPaneKeysTest, ArbitraryKeysAreEnteredShownAndApplied) {
    Open();
    Choose(IDC_PANE_BUTTON4, 37);
    const HWND dialog = AwaitKeyDialog();
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), sheet->Sheet());
    EnterKey(dialog, IDC_KEYS_INPUT1, L"Left Ctrl");
    EnterKey(dialog, IDC_KEYS_INPUT3, L"V");
    Finish(dialog, IDC_KEYS_OK);
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), L"Arbitrary key[Left Ctrl+V]");
    EXPECT_EQ(ArbitraryKeyText(IDC_PANE_BUTTON5), L"Arbitrary key");
    ForgetModelValues();
    ApplySuccessfully();
    EXPECT_EQ(ModelValues(),
              (std::map<std::wstring, StoredValue>{{L"BindKeyMinus", StoredNumber(37)},
                                                   {L"BindKeyMinus_etcKey", StoredText(L"Left Ctrl+V")}}));
    EXPECT_EQ(SavedElement("button4_etcKey"), "Left Ctrl+V");
}

TEST_F(ButtonPaneKeysTest, EntryStaysInItsPlaceWithItsNumber) {
    Open();
    const HWND combo = sheet->PaneControl(IDC_PANE_BUTTON4);
    const std::vector<int> before = DataOf(combo);
    Choose(IDC_PANE_BUTTON4, 37);
    const HWND dialog = AwaitKeyDialog();
    EnterKey(dialog, IDC_KEYS_INPUT1, L"A");
    Finish(dialog, IDC_KEYS_OK);
    EXPECT_EQ(DataOf(combo), before);
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON4), 37);
}

TEST_F(ButtonPaneKeysTest, CancelledKeyDialogLeavesTheKeysAlone) {
    WriteProfiles({ProfileText("Default", {{"button4", "37"}, {"button4_etcKey", "Left Alt+F4"}})});
    Open();
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), L"Arbitrary key[Left Alt+F4]");
    Choose(IDC_PANE_BUTTON4, 37);
    const HWND dialog = AwaitKeyDialog();
    wchar_t shown[64]{};
    GetDlgItemTextW(dialog, IDC_KEYS_INPUT1, shown, 64);
    EXPECT_STREQ(shown, L"Left Alt");
    EnterKey(dialog, IDC_KEYS_INPUT1, L"A");
    Finish(dialog, IDC_KEYS_CANCEL);
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), L"Arbitrary key[Left Alt+F4]");
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("button4_etcKey"), "Left Alt+F4");
}

TEST_F(ButtonPaneKeysTest, ClearedKeysShowThePlainEntry) {
    WriteProfiles({ProfileText("Default", {{"button4", "37"}, {"button4_etcKey", "Left Alt+F4"}})});
    Open();
    Choose(IDC_PANE_BUTTON4, 37);
    const HWND dialog = AwaitKeyDialog();
    Click(IDC_PANE_HELP);
    PostMessageW(GetDlgItem(dialog, IDC_KEYS_CLEAR), BM_CLICK, 0, 0);
    Finish(dialog, IDC_KEYS_OK);
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), L"Arbitrary key");
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("button4_etcKey"), "");
}

TEST_F(ButtonPaneKeysTest, ClearedKeysComeBackWithCancel) {
    WriteProfiles({ProfileText("Default", {{"button4", "37"}, {"button4_etcKey", "Left Alt+F4"}})});
    Open();
    Choose(IDC_PANE_BUTTON4, 37);
    const HWND dialog = AwaitKeyDialog();
    SendMessageW(dialog, WM_COMMAND, IDC_KEYS_CLEAR, 0);
    Finish(dialog, IDC_KEYS_CANCEL);
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), L"Arbitrary key[Left Alt+F4]");
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("button4_etcKey"), "Left Alt+F4");
}

TEST_F(ButtonPaneKeysTest, OnlyTiltsForbidShift) {
    mouse.buttonCount = 7;
    Open();
    Choose(IDC_PANE_RIGHT, 1);
    for (int slot = 0; slot < 7; ++slot) {
        Choose(kSlotControls[slot], 37);
        const HWND dialog = AwaitKeyDialog();
        const bool hasShift = SendDlgItemMessageW(dialog, IDC_KEYS_INPUT1, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                  reinterpret_cast<LPARAM>(L"Left Shift")) != CB_ERR;
        EXPECT_EQ(hasShift, slot < 5) << slot;
        Finish(dialog, IDC_KEYS_CANCEL);
        if (kSlotControls[slot] == IDC_PANE_LEFT) Choose(IDC_PANE_LEFT, 1);
    }
}

TEST_F(ButtonPaneKeysTest, ShiftIsNotShownForControlsThatTheMouseLacks) {
    WriteProfiles({ProfileText("Default", {{"button5", "37"},
                                           {"button5_etcKey", "Left Shift+A"},
                                           {"tiltleft", "37"},
                                           {"tiltleft_etcKey", "Left Shift+Shift+B"},
                                           {"tiltright", "37"},
                                           {"tiltright_etcKey", "Right Shift"}})});
    Open();
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON5)), L"Arbitrary key[Left Shift+A]");
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_TILT_LEFT)), L"Arbitrary key[B]");
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_TILT_RIGHT)), L"Arbitrary key");
}

TEST_F(ButtonPaneKeysTest, KeysOfAnotherProfileAreNotShown) {
    WriteProfiles({ProfileText("Default", {{"button4", "37"}, {"button4_etcKey", "A"}}), ProfileText("Games")});
    Open();
    ChooseProfile(1);
    EXPECT_EQ(ArbitraryKeyText(IDC_PANE_BUTTON4), L"Arbitrary key");
    ChooseProfile(0);
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), L"Arbitrary key[A]");
}

}  // namespace
}  // namespace kvn::test

// Drop-down lists that are left without confirming: what was chosen before comes back, and nothing else is stored.
#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/gesture_fixture.h"
#include "tests/support/key_dialog.h"

namespace kvn::test {
namespace {

class OpenListTest : public GestureTest {
protected:
    // Opens the list with the keyboard and goes to the entry with this number, which nobody confirms.
    void GoTo(HWND combo, int data) const {
        SetFocusTo(combo);
        PressKey(VK_F4);
        Await("the open list", [=] { return IsListOpen(combo); });
        const int way = IndexOfData(combo, data) - SelectedIndex(combo);
        for (int step = 0; step < std::abs(way); ++step) PressKey(way > 0 ? VK_DOWN : VK_UP);
        Await("the entry", [=] { return SelectedData(combo) == data; });
    }
    void AwaitClosedList(HWND combo) const {
        Await("the closed list", [=] { return !IsListOpen(combo); });
        EXPECT_TRUE(sheet->IsQuiet());
    }

    struct Leaving {
        std::string name;
        std::function<void()> leave;
    };
    std::vector<Leaving> WaysToLeave() const {
        return {{"Esc", [] { PressKey(VK_ESCAPE); }},
                {"Tab", [] { PressKey(VK_TAB); }},
                {"another control", [this] { SetFocusTo(sheet->PaneControl(IDC_PANE_HORIZONTAL_SPEED)); }},
                {"a program", [this] {
                     for (const int control : kSlotControls) {
                         SendMessageW(sheet->PaneControl(control), CB_SHOWDROPDOWN, FALSE, 0);
                     }
                 }}};
    }
    // As F4 and Alt+Up leave a list where they do not confirm.
    void Press(WORD key, bool withAlt) const {
        if (withAlt) HoldKey(VK_LMENU);
        PressKey(key);
        if (withAlt) LetGoOfKey(VK_LMENU);
    }

    // Opens the list of profiles and goes down by one entry; the list stays open.
    HWND GoToNextProfile() const {
        const HWND combo = sheet->PageControl(IDC_PAGE_PROFILE);
        SetFocusTo(combo);
        PressKey(VK_F4);
        Await("the open list", [=] { return IsListOpen(combo); });
        PressKey(VK_DOWN);
        return combo;
    }

    // Chooses as programs do that send no notification.
    void SetSilently(int control, int data) const {
        const HWND combo = sheet->PaneControl(control);
        SelectData(combo, data);
    }
};

TEST_F(OpenListTest, AChooserGetsBackWhatItHadBefore) {
    Open();
    BringToFront(sheet->Sheet());
    const HWND combo = sheet->PaneControl(IDC_PANE_LEFT);
    for (const int data : {2, 36, 37}) {
        for (const Leaving& way : WaysToLeave()) {
            SCOPED_TRACE(way.name + ", " + std::to_string(data));
            GoTo(combo, data);
            way.leave();
            AwaitClosedList(combo);
            EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
        }
    }
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("lbutton"), "1");
}

TEST_F(OpenListTest, TheKeysThatCloseAListGiveBackOrConfirm) {
    Open();
    BringToFront(sheet->Sheet());
    const HWND combo = sheet->PaneControl(IDC_PANE_LEFT);
    for (const bool withAlt : {false, true}) {
        SCOPED_TRACE(withAlt ? "Alt+Up" : "F4");
        GoTo(combo, 2);
        Press(withAlt ? VK_UP : VK_F4, withAlt);
        AwaitClosedList(combo);
        EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
    }
}

TEST_F(OpenListTest, ApplyStoresWhatWasChosenBefore) {
    WriteProfiles({ProfileText("Default", {{"button4", "36"}})});
    Open();
    BringToFront(sheet->Sheet());
    const HWND left = sheet->PaneControl(IDC_PANE_LEFT);
    GoTo(left, 2);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("lbutton"), "1");
    EXPECT_FALSE(IsListOpen(left));
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
    GoTo(sheet->PaneControl(IDC_PANE_BUTTON5), 36);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("button5"), "4");
    EXPECT_TRUE(ModelValues().empty());
}

TEST_F(OpenListTest, AConfirmedChoiceIsNotTakenBackByTheWarning) {
    WriteProfiles({ProfileText("Default", {{"rbutton", "1"}, {"button4", "36"}})});
    Open();
    BringToFront(sheet->Sheet());
    GoTo(sheet->PaneControl(IDC_PANE_BUTTON5), 36);
    PressKey(VK_RETURN);
    ExpectWarning(AnswerMessageBox("about the gesture", IDOK), L"Gesture is already registered.");
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_BUTTON5), 4);
    GoTo(sheet->PaneControl(IDC_PANE_RIGHT), 5);
    PressKey(VK_RETURN);
    AwaitClosedList(sheet->PaneControl(IDC_PANE_RIGHT));
    GoTo(sheet->PaneControl(IDC_PANE_LEFT), 5);
    PressKey(VK_RETURN);
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 5);
}

TEST_F(OpenListTest, AConfirmedArbitraryKeyIsNotTakenBackByItsDialog) {
    Open();
    BringToFront(sheet->Sheet());
    const HWND combo = sheet->PaneControl(IDC_PANE_BUTTON4);
    GoTo(combo, 37);
    PressKey(VK_RETURN);
    const HWND dialog = AwaitKeyDialog();
    EnterKey(dialog, IDC_KEYS_INPUT1, L"A");
    CloseKeyDialog(dialog, IDC_KEYS_OK);
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(SelectedText(combo), L"Arbitrary key[A]");
    GoTo(combo, 3);
    PressKey(VK_ESCAPE);
    AwaitClosedList(combo);
    EXPECT_EQ(SelectedText(combo), L"Arbitrary key[A]");
}

TEST_F(OpenListTest, WhatNobodyConfirmedIsStoredOnlyIfTheRulesAllowIt) {
    WriteProfiles({ProfileText("Default", {{"button4", "36"}})});
    Open();
    SetSilently(IDC_PANE_LEFT, 2);
    SetSilently(IDC_PANE_CENTER, 10);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("lbutton"), "1");
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
    SetSilently(IDC_PANE_BUTTON5, 36);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("button5"), "4");
    SetSilently(IDC_PANE_CENTER, 10);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("tbutton"), "10");
}

TEST_F(OpenListTest, WhatWasConfirmedIsKeptWhenTheRestIsTakenBack) {
    Open();
    Choose(IDC_PANE_CENTER, 10);
    SetSilently(IDC_PANE_LEFT, 2);
    SetSilently(IDC_PANE_CENTER, 11);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("lbutton"), "1");
    EXPECT_EQ(SavedElement("tbutton"), "10");
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 10);
}

TEST_F(OpenListTest, AProfileThatNeverHadALeftClickIsStoredAsItIs) {
    WriteProfiles({ProfileText("Default", {{"lbutton", "5"}, {"rbutton", "36"}, {"button4", "36"}})});
    Open();
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("lbutton"), "5");
    EXPECT_EQ(SavedElement("rbutton"), "36");
    EXPECT_EQ(SavedElement("button4"), "36");
}

TEST_F(OpenListTest, AProfileThatBreaksTheRulesTakesNothingOnThatNobodyConfirmed) {
    WriteProfiles({ProfileText("Default", {{"lbutton", "5"}, {"button4", "36"}})});
    Open();
    SetSilently(IDC_PANE_BUTTON5, 36);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("lbutton"), "5");
    EXPECT_EQ(SavedElement("button4"), "36");
    EXPECT_EQ(SavedElement("button5"), "4");
}

TEST_F(OpenListTest, WhateverIsDoneToAChooserTheRulesAreKept) {
    WriteProfiles({ProfileText("Default", {{"button4", "36"}}), ProfileText("Other")});
    Open();
    BringToFront(sheet->Sheet());
    const HWND left = sheet->PaneControl(IDC_PANE_LEFT);
    const HWND fifth = sheet->PaneControl(IDC_PANE_BUTTON5);
    const auto turnWheel = [](HWND combo) { SendMessageW(combo, WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0); };
    const auto expectRules = [&](const std::string& what) {
        ApplySuccessfully();
        EXPECT_EQ(SavedElement("lbutton"), "1") << what;
        EXPECT_EQ(SavedElement("button4"), "36") << what;
        EXPECT_NE(SavedElement("button5"), "36") << what;
    };
    SetFocusTo(left);
    sheet->Start([=] { turnWheel(left); });
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    expectRules("the wheel over a closed list");
    SetFocusTo(left);
    PressKey('R');
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    expectRules("a letter");
    SetFocusTo(fifth);
    PressKey('G');
    ExpectWarning(AnswerMessageBox("about the gesture", IDOK), L"Gesture is already registered.");
    expectRules("a letter for the gesture");
    GoTo(left, 2);
    sheet->Start([=] { turnWheel(left); });
    sheet->Settle();
    PressKey(VK_ESCAPE);
    AwaitClosedList(left);
    expectRules("the wheel over an open list");
    GoTo(left, 2);
    ChooseProfile(1);
    ChooseProfile(0);
    expectRules("another profile");
    GoTo(left, 2);
    sheet->Run([this] { SendMessageW(sheet->PageControl(IDC_PAGE_TAB), TCM_SETCURFOCUS, 1, 0); });
    expectRules("another tab");
    GoTo(left, 2);
    sheet->PressOk();
    EXPECT_EQ(sheet->AwaitClosed(), 1);
    EXPECT_EQ(SavedElement("lbutton"), "1");
}

TEST_F(OpenListTest, ApplyStoresTheProfileFromBeforeItsListWasOpened) {
    WriteProfiles({ProfileText("Default"), ProfileText("Games")});
    Open();
    BringToFront(sheet->Sheet());
    const HWND combo = GoToNextProfile();
    Await("the other profile", [=] { return SelectedIndex(combo) == 1; });
    // As a program presses it, which leaves the focus where it is.
    SendMessageW(sheet->Sheet(), PSM_APPLY, 0, 0);
    EXPECT_FALSE(IsListOpen(combo));
    EXPECT_EQ(SelectedIndex(combo), 0);
    EXPECT_EQ(SavedElement("select_profile", -1), "0");
}

TEST_F(OpenListTest, TheNumberOfRevolutionsComesBackWithItsSpeeds) {
    Open();
    BringToFront(sheet->Sheet());
    const HWND combo = sheet->PaneControl(IDC_PANE_REVOLUTION_COUNT);
    GoTo(combo, -2);
    EXPECT_TRUE(ComesTrue([&] { return !IsEnabled(IDC_PANE_FLYING_SPEED); }));
    PressKey(VK_ESCAPE);
    AwaitClosedList(combo);
    EXPECT_EQ(Chosen(IDC_PANE_REVOLUTION_COUNT), 2);
    EXPECT_TRUE(IsEnabled(IDC_PANE_FLYING_SPEED));
}

TEST_F(OpenListTest, TheProfileComesBackWithItsSettings) {
    WriteProfiles({ProfileText("Default", {{"tbutton", "10"}}), ProfileText("Games", {{"tbutton", "11"}})});
    Open();
    BringToFront(sheet->Sheet());
    const HWND combo = GoToNextProfile();
    EXPECT_TRUE(ComesTrue([&] { return Chosen(IDC_PANE_CENTER) == 11; }));
    PressKey(VK_ESCAPE);
    AwaitClosedList(combo);
    EXPECT_EQ(SelectedIndex(combo), 0);
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 10);
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("tbutton", 0), "10");
    EXPECT_EQ(SavedElement("tbutton", 1), "11");
}

TEST_F(OpenListTest, TheFunctionOfAGestureComesBack) {
    OpenWith({{"U", 5, "", ""}});
    const HWND editor = EditRow(0);
    BringToFront(editor);
    const HWND combo = GetDlgItem(editor, IDC_GESTURE_FUNCTION);
    GoTo(combo, 7);
    PressKey(VK_ESCAPE);
    Await("the closed list", [=] { return !IsListOpen(combo); });
    sheet->Settle();
    EXPECT_EQ(SelectedData(combo), 5);
    GoTo(combo, 7);
    CloseEditor(editor, IDOK);
    EXPECT_EQ(Row(0), (RowTexts{L"U", L"Switch applications", L""}));
}

TEST_F(OpenListTest, TheArbitraryKeyOfAGestureIsNotTakenBackByItsDialog) {
    OpenWith({{"U", 34, "", ""}});
    const HWND editor = EditRow(0);
    BringToFront(editor);
    const HWND combo = GetDlgItem(editor, IDC_GESTURE_FUNCTION);
    SetFocusTo(combo);
    PressKey(VK_F4);
    Await("the open list", [=] { return IsListOpen(combo); });
    PressKey(VK_DOWN);
    const HWND dialog = AwaitKeyDialog();
    EnterKey(dialog, IDC_KEYS_INPUT1, L"A");
    CloseKeyDialog(dialog, IDC_KEYS_OK);
    EXPECT_EQ(SelectedText(combo), L"Arbitrary key[A]");
    CloseEditor(editor, IDOK);
    EXPECT_EQ(Row(0), (RowTexts{L"U", L"Arbitrary key[A]", L""}));
}

}  // namespace
}  // namespace kvn::test

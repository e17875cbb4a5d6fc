// The functions that the choosers offer on the Windows version that the tests run on; os_version_test.cpp tests the
// others.
#include <windows.h>

#include <algorithm>
#include <vector>

#include "tests/support/page_fixture.h"

namespace kvn::test {
namespace {

class SlotChooserTest : public PageTest {
protected:
    bool Offers(int control, int code) const { return IndexOfData(sheet->PaneControl(control), code) >= 0; }
};

TEST_F(SlotChooserTest, OnlyControlsOfTheMouseOfferGestureAndShift) {
    for (DWORD buttons = 0; buttons <= 7; ++buttons) {
        mouse.buttonCount = buttons;
        Open();
        for (DWORD slot = 0; slot < 7; ++slot) {
            EXPECT_EQ(Offers(kSlotControls[slot], 36), slot < buttons) << buttons << " " << slot;
            EXPECT_EQ(Offers(kSlotControls[slot], 19), slot < buttons) << buttons << " " << slot;
        }
        Close();
    }
}

TEST_F(SlotChooserTest, NeverOffersTheCodesWithoutARow) {
    Open();
    for (const int control : kSlotControls) {
        for (const int code : {-2, -1, 0, 35, 46, 49, 50, 52, 55}) EXPECT_FALSE(Offers(control, code)) << code;
    }
}

TEST_F(SlotChooserTest, AllSevenOfferTheSameOnAMouseWithSevenButtons) {
    mouse.buttonCount = 7;
    Open();
    const std::vector<ComboEntry> first = EntriesOf(sheet->PaneControl(IDC_PANE_LEFT));
    EXPECT_EQ(first.front(), (ComboEntry{L"Left click", 1}));
    EXPECT_EQ(first.back(), (ComboEntry{L"Off", 38}));
    for (const int control : kSlotControls) EXPECT_EQ(EntriesOf(sheet->PaneControl(control)), first) << control;
}

TEST_F(SlotChooserTest, ArrowKeysChooseAndConfirm) {
    Open();
    BringToFront(sheet->Sheet());
    SetFocusTo(sheet->PaneControl(IDC_PANE_RIGHT));
    PressKey(VK_DOWN);
    EXPECT_TRUE(ComesTrue([&] { return Chosen(IDC_PANE_RIGHT) == 3; }));
    EXPECT_TRUE(sheet->IsApplyEnabled());
    PressKey(VK_END);
    EXPECT_TRUE(ComesTrue([&] { return Chosen(IDC_PANE_RIGHT) == 38; }));
}

TEST_F(SlotChooserTest, ArrowKeysKeepTheLastLeftClick) {
    Open();
    BringToFront(sheet->Sheet());
    SetFocusTo(sheet->PaneControl(IDC_PANE_LEFT));
    PressKey(VK_DOWN);
    ExpectWarning(AnswerMessageBox("about the left click", IDOK), L"Left Click is not set.");
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
}

TEST_F(SlotChooserTest, ChoosingFromTheOpenListConfirms) {
    Open();
    BringToFront(sheet->Sheet());
    const HWND combo = sheet->PaneControl(IDC_PANE_BUTTON4);
    SetFocusTo(combo);
    PressKey(VK_F4);
    Await("the open list", [=] { return IsListOpen(combo); });
    PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    Await("the closed list", [=] { return !IsListOpen(combo); });
    EXPECT_TRUE(ComesTrue([&] { return Chosen(IDC_PANE_BUTTON4) == 4; }));
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(SlotChooserTest, MakesTheHostQuitWhenThePageIsDestroyed) {
    int quits = 0;
    const ReplacedImport<"PostQuitMessage", decltype(PostQuitMessage)> quit(module.Handle(), [&](int code) {
        EXPECT_EQ(code, 0);
        ++quits;
    });
    Open();
    EXPECT_EQ(quits, 0);
    Close();
    // At WM_DESTROY and at WM_NCDESTROY of each chooser.
    EXPECT_EQ(quits, 14);
}

TEST_F(SlotChooserTest, AnswersItsDestructionItself) {
    int quits = 0;
    const ReplacedImport<"PostQuitMessage", decltype(PostQuitMessage)> quit(module.Handle(), [&](int) { ++quits; });
    std::vector<UINT> passedOn;
    const ReplacedImport<"CallWindowProcW", decltype(CallWindowProcW)> pass(
        module.Handle(), [&](WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            passedOn.push_back(message);
            return CallWindowProcW(procedure, window, message, wParam, lParam);
        });
    ASSERT_TRUE(quit.IsInPlace() && pass.IsInPlace());
    Open();
    for (const int control : kSlotControls) {
        sheet->Run([&, combo = sheet->PaneControl(control)] {
            passedOn.clear();
            EXPECT_EQ(SendMessageW(combo, WM_DESTROY, 0, 0), 0);
            EXPECT_EQ(SendMessageW(combo, WM_NCDESTROY, 0, 0), 0);
            EXPECT_EQ(passedOn, std::vector<UINT>()) << control;
            SendMessageW(combo, CB_GETCOUNT, 0, 0);
            EXPECT_EQ(passedOn, std::vector<UINT>{CB_GETCOUNT}) << control;
        });
    }
    EXPECT_EQ(quits, 14);
}

}  // namespace
}  // namespace kvn::test

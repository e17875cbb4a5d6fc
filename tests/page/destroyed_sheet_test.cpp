// A host that destroys the sheet while one of our dialogs stands open above it.
#include "tests/page/gesture_test.h"
#include "tests/support/key_dialog.h"
#include "tests/support/profile_dialogs.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

class DestroyedSheetTest : public GestureTest {
protected:
    void SetUp() override { OpenWith({{"U", 3, "one page back", ""}}); }

    // Whoever waits above the sheet has to return into code that still stands.
    void DestroySheet() {
        const HWND window = sheet->Sheet();
        sheet->Start([=] { DestroyWindow(window); });
        sheet->AwaitClosed();
        EXPECT_EQ(nullptr, OpenMessageBox());
        sheet.reset();
        EXPECT_EQ(S_OK, module.CanUnloadNow());
    }
};

TEST_F(DestroyedSheetTest, TheGestureEditorReturns) {
    const HWND editor = OpenEditorWithTimer();
    ClickStroke(editor);
    HoldGestureButton(editor);
    const HWND overlay = OverlayOf(editor);
    DestroySheet();
    EXPECT_FALSE(IsWindow(editor));
    EXPECT_FALSE(IsWindow(overlay));
}

TEST_F(DestroyedSheetTest, TheQuestionBeforeADeletionReturns) {
    SelectRow(0);
    Command(IDC_GESTURES_DELETE);
    Await("the question", [] { return OpenMessageBox(); });
    DestroySheet();
}

TEST_F(DestroyedSheetTest, TheKeyDialogOfAChooserReturns) {
    Choose(IDC_PANE_BUTTON4, 37);
    const HWND keys = AwaitKeyDialog();
    DestroySheet();
    EXPECT_FALSE(IsWindow(keys));
}

TEST_F(DestroyedSheetTest, TheProfileEditorReturns) {
    PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
    const auto editor = ProfileEditorDialog::Await();
    DestroySheet();
    EXPECT_FALSE(editor.IsOpen());
}

TEST_F(DestroyedSheetTest, TheNameDialogAndTheEditorBelowItReturn) {
    PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
    const auto editor = ProfileEditorDialog::Await();
    editor.Press(IDC_PROFILES_ADD);
    const HWND name = AwaitNameDialog();
    DestroySheet();
    EXPECT_FALSE(IsWindow(name));
}

}  // namespace
}  // namespace kvn::test

// A host that destroys the sheet while one of the page's dialogs is open above it.
#include <malloc.h>

#include <algorithm>
#include <cstdlib>

#include "tests/support/access_violations.h"
#include "tests/support/gesture_fixture.h"
#include "tests/support/key_dialog.h"
#include "tests/support/profile_dialogs.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

// Overwrites memory that the module frees, so that any later use of it fails quickly.
void SpoilAndFree(void* block) {
    // Volatile, so that the compiler does not drop the writes.
    if (block != nullptr) std::fill_n(static_cast<volatile unsigned char*>(block), _msize(block), 0xDD);
    std::free(block);
}

class DestroyedSheetTest : public GestureTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(spoiling.IsInPlace());
        OpenWith({{"U", 3, "one page back", ""}});
    }

    // The dialog that waits above the sheet must return into code that is still loaded.
    void DestroySheet() {
        const HWND window = sheet->Sheet();
        sheet->Start([=] { DestroyWindow(window); });
        sheet->AwaitClosed();
        EXPECT_EQ(OpenMessageBox(), nullptr);
        sheet.reset();
        EXPECT_EQ(module.CanUnloadNow(), S_OK);
        EXPECT_EQ(AccessViolations::Seen(), 0);
    }

private:
    const AccessViolations violations;
    const ReplacedImport<"free", void(void*)> spoiling{module.Handle(), SpoilAndFree};
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

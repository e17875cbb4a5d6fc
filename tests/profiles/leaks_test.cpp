// Repeated opening and closing leaves nothing behind in memory.
#include <windows.h>

#include "tests/profiles/selection_fixture.h"
#include "tests/support/lasting_cost.h"
#include "tests/support/resource_use.h"

namespace kvn::test {
namespace {

class ProgramSelectionLeaksTest : public SelectionTest {
protected:
    void OpenAndClose(int times) {
        for (int i = 0; i < times; ++i) {
            Open();
            Select(i % 20);
            const HWND proposal = OpenWindowDialog();
            Press(proposal, IDCANCEL);
            Await("the end of the proposal", [=] { return !IsWindow(proposal); });
            EXPECT_TRUE(Close(IDOK));
            chosen.clear();
        }
    }
};

TEST_F(ProgramSelectionLeaksTest, FiftyOpeningsLeaveNoMoreThanFive) {
    for (int i = 0; i < 20; ++i) {
        menu.own.AddShortcut(L"folder\\" + std::to_wstring(i) + L".lnk", L"C:\\windows\\notepad.exe");
    }
    OpenAndClose(5);
    const HeapUse runtimeBefore = UseOf(RuntimeHeap());
    const HeapUse processBefore = UseOf(GetProcessHeap());
    OpenAndClose(50);
    const HeapUse runtimeAfter = UseOf(RuntimeHeap());
    const HeapUse processAfter = UseOf(GetProcessHeap());
    EXPECT_LE(runtimeAfter.blocks, runtimeBefore.blocks + 5);
    EXPECT_LE(runtimeAfter.bytes, runtimeBefore.bytes + 1000);
    // Windows' own heap holds the icons, images, item lists and shell links; a leak of one for each opening would be at
    // least 50 blocks. Wine 10 keeps some for each thread that has shown a text field.
    EXPECT_LE(processAfter.blocks, processBefore.blocks + CostOf(ShowTextField).Of(50).processBlocks + 40);
}

}  // namespace
}  // namespace kvn::test

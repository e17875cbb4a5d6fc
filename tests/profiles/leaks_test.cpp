// Opening and closing again and again leaves nothing behind in memory.
#include <windows.h>

#include <malloc.h>

#include "tests/profiles/selection_test.h"

namespace kvn::test {
namespace {

struct HeapUse {
    std::size_t blocks = 0;
    std::size_t bytes = 0;
};

// What is in use of the C run-time library's heap, where all of the module's own objects live.
HeapUse UseOf(HANDLE heap) {
    HeapUse use;
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
        if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
        ++use.blocks;
        use.bytes += entry.cbData;
    }
    HeapUnlock(heap);
    return use;
}

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
    const auto runtimeHeap = reinterpret_cast<HANDLE>(_get_heap_handle());
    OpenAndClose(5);
    const HeapUse runtimeBefore = UseOf(runtimeHeap);
    const HeapUse processBefore = UseOf(GetProcessHeap());
    OpenAndClose(50);
    const HeapUse runtimeAfter = UseOf(runtimeHeap);
    const HeapUse processAfter = UseOf(GetProcessHeap());
    EXPECT_LE(runtimeAfter.blocks, runtimeBefore.blocks + 5);
    EXPECT_LE(runtimeAfter.bytes, runtimeBefore.bytes + 1000);
    // Windows' own heap holds the icons, images, item lists and shell links; one of them for each opening would be 50
    // blocks at the least.
    EXPECT_LE(processAfter.blocks, processBefore.blocks + 40);
}

}  // namespace
}  // namespace kvn::test

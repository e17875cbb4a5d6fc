#include "tests/support/resource_use.h"

#include <malloc.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "tests/support/platform.h"

namespace kvn::test {
namespace {

// Takes the lowest free places of a table until the holes are filled. The highest place, less the number of taken ones,
// is the number of objects before.
template <typename Handle, typename Make, typename PlaceOf, typename GiveBack>
std::size_t CountObjects(std::size_t probes, Make make, PlaceOf placeOf, GiveBack giveBack) {
    std::vector<Handle> made;
    std::size_t highest = 0;
    for (std::size_t i = 0; i < probes; ++i) {
        const Handle handle = make();
        if (handle == nullptr) break;
        made.push_back(handle);
        highest = std::max(highest, placeOf(handle));
    }
    // The newest first, so that the next count finds the table unchanged.
    std::for_each(made.rbegin(), made.rend(), giveBack);
    return highest - std::min(highest, made.size());
}

std::size_t CountWindows() {
    std::size_t count = 0;
    const auto countOwn = [](HWND window, LPARAM counter) -> BOOL {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId()) ++*reinterpret_cast<std::size_t*>(counter);
        return TRUE;
    };
    EnumWindows(countOwn, reinterpret_cast<LPARAM>(&count));
    return count;
}

std::size_t CountPrivateBytes() {
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region{};
    const char* address = nullptr;
    while (VirtualQuery(address, &region, sizeof region) == sizeof region) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
        address = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
    }
    return bytes;
}

// The table's index is in the low word of a GDI and of a user handle.
template <typename Handle>
std::size_t IndexOf(Handle handle) {
    return LOWORD(reinterpret_cast<ULONG_PTR>(handle));
}

std::size_t CountUserObjects() {
    if (!RunsUnderWine()) return GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    return CountObjects<HMENU>(
        kManyProbes, [] { return CreateMenu(); }, IndexOf<HMENU>, [](HMENU menu) { DestroyMenu(menu); });
}

// The layout of Wine's heap where it keeps small blocks in groups.
struct BlockHeader {
    WORD size;    // with this header, in units
    WORD unused;  // bytes at the end
    WORD index;
    BYTE type;
    BYTE flags;
};
struct BlockGroup {
    void* links[2];
    LONG freeBlocks;  // a bit for each
    LONG thread;
    BlockHeader first;  // the other blocks follow
};
static_assert(sizeof(BlockHeader) == 8 && offsetof(BlockGroup, first) == 24);
constexpr BYTE kIsGroup = 0x80;
constexpr std::size_t kSizeUnit = 16;
constexpr std::size_t kBlocksOfGroup = 31;

bool IsGroup(const PROCESS_HEAP_ENTRY& entry) {
    return HeapListsGroups() && (static_cast<const BlockHeader*>(entry.lpData)[-1].flags & kIsGroup) != 0;
}

HeapUse UseOfGroup(const BlockGroup& group) {
    HeapUse use;
    const std::size_t size = group.first.size * kSizeUnit;
    const auto* block = reinterpret_cast<const char*>(&group.first);
    for (std::size_t i = 0; i < kBlocksOfGroup; ++i, block += size) {
        if ((group.freeBlocks >> i & 1) != 0) continue;
        ++use.blocks;
        use.bytes += size - sizeof(BlockHeader) - reinterpret_cast<const BlockHeader*>(block)->unused;
    }
    return use;
}

HeapUse UseOfEntry(const PROCESS_HEAP_ENTRY& entry) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) return {};
    if (IsGroup(entry)) return UseOfGroup(*static_cast<const BlockGroup*>(entry.lpData));
    return {1, entry.cbData};
}

}  // namespace

HeapUse UseOf(HANDLE heap) {
    HeapUse use;
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry)) {
        const HeapUse part = UseOfEntry(entry);
        use.blocks += part.blocks;
        use.bytes += part.bytes;
    }
    HeapUnlock(heap);
    return use;
}

HANDLE RuntimeHeap() {
    return reinterpret_cast<HANDLE>(_get_heap_handle());
}

std::size_t CountGdiObjects(std::size_t probes) {
    if (!RunsUnderWine()) return GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    return CountObjects<HPEN>(
        probes, [] { return CreatePen(PS_SOLID, 1, RGB(0, 0, 0)); }, IndexOf<HPEN>,
        [](HPEN pen) { DeleteObject(pen); });
}

std::size_t CountKernelHandles(std::size_t probes) {
    if (!RunsUnderWine()) {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    }
    return CountObjects<HANDLE>(
        probes, [] { return CreateEventW(nullptr, TRUE, FALSE, nullptr); },
        [](HANDLE handle) { return reinterpret_cast<ULONG_PTR>(handle) / 4; },
        [](HANDLE handle) { CloseHandle(handle); });
}

ResourceUse MeasureResourceUse() {
    ResourceUse use;
    use.windows = CountWindows();
    use.kernelHandles = CountKernelHandles();
    use.gdiObjects = CountGdiObjects();
    use.userObjects = CountUserObjects();
    use.privateBytes = CountPrivateBytes();
    use.processHeap = UseOf(GetProcessHeap());
    use.runtimeHeap = UseOf(RuntimeHeap());
    return use;
}

std::string Describe(const ResourceUse& use) {
    std::ostringstream text;
    text << "run-time heap " << use.runtimeHeap.blocks << " blocks, " << use.runtimeHeap.bytes
         << " bytes; process heap " << use.processHeap.blocks << " blocks, " << use.processHeap.bytes
         << " bytes; private " << use.privateBytes / 1024 << " KiB; windows " << use.windows << "; handles "
         << use.kernelHandles << "; GDI " << use.gdiObjects << "; user " << use.userObjects;
    return text.str();
}

}  // namespace kvn::test

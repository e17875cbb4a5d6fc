// The memory and the Windows objects of this process, for comparison before and after.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

namespace kvn::test {

struct HeapUse {
    std::size_t blocks = 0;
    std::size_t bytes = 0;
};

// The use of a heap.
HeapUse UseOf(HANDLE heap);
// The heap of the C run-time library, which holds all of the module's own objects.
HANDLE RuntimeHeap();

// Wine does not count objects. There all but the first four figures come from making more objects of a kind until its
// table has no holes; user objects are then those of all processes of the session.
struct ResourceUse {
    HeapUse runtimeHeap;
    HeapUse processHeap;
    std::size_t privateBytes = 0;
    std::size_t windows = 0;  // top-level windows, including hidden ones
    std::size_t kernelHandles = 0;
    std::size_t gdiObjects = 0;
    std::size_t userObjects = 0;
};

ResourceUse MeasureResourceUse();

// Only these two figures. There must be more probes than holes in the table.
inline constexpr std::size_t kManyProbes = 3000;
std::size_t CountGdiObjects(std::size_t probes = kManyProbes);
std::size_t CountKernelHandles(std::size_t probes = kManyProbes);

// The use as one line of text.
std::string Describe(const ResourceUse& use);

}  // namespace kvn::test

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

// What is in use of a heap.
HeapUse UseOf(HANDLE heap);
// The heap of the C run-time library, where all objects of the module's own live.
HANDLE RuntimeHeap();

// Wine counts no objects, so all but the first four are found there by making more of a kind until its table has no
// holes left; user objects are then those of all processes of the session.
struct ResourceUse {
    HeapUse runtimeHeap;
    HeapUse processHeap;
    std::size_t privateBytes = 0;
    std::size_t windows = 0;  // top-level ones, hidden ones among them
    std::size_t kernelHandles = 0;
    std::size_t gdiObjects = 0;
    std::size_t userObjects = 0;
};

ResourceUse MeasureResourceUse();

// Two of them alone. The probes must be more than the table has holes.
inline constexpr std::size_t kManyProbes = 3000;
std::size_t CountGdiObjects(std::size_t probes = kManyProbes);
std::size_t CountKernelHandles(std::size_t probes = kManyProbes);

// One line.
std::string Describe(const ResourceUse& use);

}  // namespace kvn::test

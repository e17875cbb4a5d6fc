// How often this thread has taken memory from the heap.
#pragma once

#include <cstddef>

namespace kvn::test {

// Counts from now on, on this thread alone; the second stops and returns the count.
void CountAllocations();
std::size_t StopCountingAllocations();

}  // namespace kvn::test

// Counts this thread's heap allocations.
#pragma once

#include <cstddef>

namespace kvn::test {

// The first starts to count on this thread; the second stops and returns the count.
void CountAllocations();
std::size_t StopCountingAllocations();

}  // namespace kvn::test

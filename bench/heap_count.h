// Counts this program's heap allocations. Every malloc, calloc and realloc of the program is linked to a counting one,
// and so is every operator new, which calls malloc.
#pragma once

#include <cstddef>

namespace kvn::bench {

// The number since the program started.
std::size_t HeapAllocations();

}  // namespace kvn::bench

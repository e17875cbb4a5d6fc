// Counts what this program takes from the heap. Every malloc, calloc and realloc of the program is linked to a counting
// one, and so is every operator new, which calls malloc.
#pragma once

#include <cstddef>

namespace kvn::bench {

// Since the program began.
std::size_t HeapAllocations();

}  // namespace kvn::bench

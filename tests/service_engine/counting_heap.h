// Counts what the program takes from the heap.
#pragma once

#include <cstdint>

namespace kvn::service {

std::uint64_t AllocationCount();

}  // namespace kvn::service

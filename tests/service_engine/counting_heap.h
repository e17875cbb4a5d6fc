// Counts the program's heap allocations.
#pragma once

#include <cstdint>

namespace kvn::service {

std::uint64_t AllocationCount();

}  // namespace kvn::service

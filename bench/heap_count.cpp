#include "bench/heap_count.h"

#include <atomic>

namespace {

std::atomic<std::size_t> allocations = 0;

}  // namespace

namespace kvn::bench {

std::size_t HeapAllocations() {
    return allocations;
}

}  // namespace kvn::bench

// The linker's --wrap turns calls of NAME into calls of __wrap_NAME; __real_NAME is the C library's own function.
extern "C" {

void* __real_malloc(std::size_t bytes);
void* __real_calloc(std::size_t count, std::size_t bytes);
void* __real_realloc(void* memory, std::size_t bytes);

void* __wrap_malloc(std::size_t bytes) {
    ++allocations;
    return __real_malloc(bytes);
}

void* __wrap_calloc(std::size_t count, std::size_t bytes) {
    ++allocations;
    return __real_calloc(count, bytes);
}

void* __wrap_realloc(void* memory, std::size_t bytes) {
    ++allocations;
    return __real_realloc(memory, bytes);
}
}

#include "tests/service_input/allocation_count.h"

#include <windows.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace kvn::test {
namespace {

std::atomic<DWORD> countedThread = 0;
std::atomic<std::size_t> allocations = 0;

}  // namespace

void CountAllocations() {
    allocations = 0;
    countedThread = GetCurrentThreadId();
}

std::size_t StopCountingAllocations() {
    countedThread = 0;
    return allocations;
}

static void* Allocate(std::size_t bytes) {
    if (countedThread == GetCurrentThreadId()) ++allocations;
    void* const block = std::malloc(bytes);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

}  // namespace kvn::test

void* operator new(std::size_t bytes) {
    return kvn::test::Allocate(bytes);
}

void* operator new[](std::size_t bytes) {
    return kvn::test::Allocate(bytes);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*bytes*/) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t /*bytes*/) noexcept {
    std::free(block);
}

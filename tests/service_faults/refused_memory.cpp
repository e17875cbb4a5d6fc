#include "tests/service_faults/refused_memory.h"

#include <windows.h>

#include <malloc.h>

#include <atomic>
#include <cstddef>
#include <limits>

#include "platform/memory_reserve.h"

namespace kvn::test {
namespace {

constexpr int kNever = std::numeric_limits<int>::max();

std::atomic<bool> isOn = false;
std::atomic<DWORD> testThread = 0;
std::atomic<bool> isOfTestThread = false;
std::atomic<int> count = 0;
std::atomic<int> firstRefused = kNever;
std::atomic<bool> isExhausted = false;
std::atomic<long long> givenBack = 0;  // bytes that were freed in an exhausted heap
std::atomic<int> refusals = 0;

bool Counts() {
    return isOn && (GetCurrentThreadId() == testThread) == isOfTestThread;
}

void Begin(Whose whose, int number, bool isFromThereOn) {
    platform::KeepMemoryReserve();
    testThread = GetCurrentThreadId();
    isOfTestThread = whose == Whose::This;
    count = 0;
    refusals = 0;
    givenBack = 0;
    firstRefused = number;
    isExhausted = isFromThereOn;
    isOn = true;
}

}  // namespace

bool RefusesMemory(std::size_t bytes) {
    if (!Counts()) return false;
    const int number = ++count;
    if (number < firstRefused || (number > firstRefused && !isExhausted)) return false;
    const auto wanted = static_cast<long long>(bytes);
    if (number > firstRefused && givenBack.fetch_sub(wanted) >= wanted) return false;
    if (number > firstRefused) givenBack += wanted;
    ++refusals;
    return true;
}

void TakeMemoryBack(void* block) {
    if (block != nullptr && Counts() && isExhausted && count >= firstRefused) {
        givenBack += static_cast<long long>(_msize(block));
    }
}

void RefusedMemory::RefuseOne(Whose whose, int number) {
    Begin(whose, number, false);
}

void RefusedMemory::RefuseFrom(Whose whose, int number) {
    Begin(whose, number, true);
}

bool RefusedMemory::StopRefusing() {
    isOn = false;
    return refusals != 0;
}

}  // namespace kvn::test

// The linker's --wrap turns calls of NAME into calls of __wrap_NAME; __real_NAME is the C library's own function.
extern "C" {

void* __real_malloc(std::size_t bytes);
void* __real_calloc(std::size_t count, std::size_t bytes);
void* __real_realloc(void* memory, std::size_t bytes);
void __real_free(void* memory);

void* __wrap_malloc(std::size_t bytes) {
    return kvn::test::RefusesMemory(bytes) ? nullptr : __real_malloc(bytes);
}

void* __wrap_calloc(std::size_t count, std::size_t bytes) {
    return kvn::test::RefusesMemory(count * bytes) ? nullptr : __real_calloc(count, bytes);
}

void* __wrap_realloc(void* memory, std::size_t bytes) {
    return kvn::test::RefusesMemory(bytes) ? nullptr : __real_realloc(memory, bytes);
}

void __wrap_free(void* memory) {
    kvn::test::TakeMemoryBack(memory);
    __real_free(memory);
}
}

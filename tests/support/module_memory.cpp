#include "tests/support/module_memory.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace kvn::test {
namespace {

void EndProgram() {
    std::fprintf(stderr, "the module has called abort\n");
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), 3);
}

}  // namespace

ModuleMemory::ModuleMemory(HMODULE module)
    : allocate(module, [this](std::size_t size) { return Refuses(size) ? nullptr : Remember(std::malloc(size)); }),
      allocateCleared(module,
                      [this](std::size_t number, std::size_t size) {
                          return Refuses(number * size) ? nullptr : Remember(std::calloc(number, size));
                      }),
      reallocate(module, [this](void* block, std::size_t size) { return Reallocate(block, size); }),
      giveBack(module,
               [this](void* block) {
                   Forget(block);
                   std::free(block);
               }),
      giveUp(module, EndProgram) {}

void ModuleMemory::Refuse(int first, int last) {
    count = 0;
    refused = 0;
    firstRefused = first;
    lastRefused = last;
    isExhausted = false;
}

void ModuleMemory::ExhaustFrom(int allocation) {
    Refuse(allocation, std::numeric_limits<int>::max());
    isExhausted = true;
    givenBack = 0;
}

bool ModuleMemory::StopRefusing() {
    firstRefused = 0;
    return refused > 0;
}

bool ModuleMemory::IsInPlace() const {
    return allocate.IsInPlace() && allocateCleared.IsInPlace() && reallocate.IsInPlace() && giveBack.IsInPlace() &&
           giveUp.IsInPlace();
}

bool ModuleMemory::Refuses(std::size_t size) {
    if (firstRefused == 0) return false;
    ++count;
    if (count < firstRefused || count > lastRefused) return false;
    if (isExhausted && size <= givenBack) {
        givenBack -= size;
        return false;
    }
    ++refused;
    if (isCareless) lost.merge(careless);
    EndCarelessWork();
    return true;
}

void ModuleMemory::BeginCarelessWork() {
    EndCarelessWork();
    isCareless = true;
}

void ModuleMemory::EndCarelessWork() {
    isCareless = false;
    careless.clear();
}

void* ModuleMemory::Remember(void* block) {
    if (block == nullptr) return block;
    live.insert(block);
    if (isCareless) careless.insert(block);
    return block;
}

void ModuleMemory::Forget(void* block) {
    if (block == nullptr) return;
    Strike(block);
    if (isExhausted && refused > 0) givenBack += _msize(block);
}

void ModuleMemory::Strike(void* block) {
    for (auto* blocks : {&live, &careless, &lost}) blocks->erase(block);
}

void* ModuleMemory::Reallocate(void* block, std::size_t size) {
    if (Refuses(size)) return nullptr;
    Strike(block);
    void* const moved = std::realloc(block, size);
    return Remember(moved == nullptr && size != 0 ? block : moved);
}

}  // namespace kvn::test

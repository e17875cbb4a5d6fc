// The memory that a module allocates from the C library, counted block by block. Tests can refuse it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <unordered_set>

#include "tests/support/replaced_import.h"

namespace kvn::test {

// Used on one thread, like the module. A module that aborts for lack of memory ends the test program.
class ModuleMemory {
public:
    explicit ModuleMemory(HMODULE module);

    // Refuses the allocations with these numbers, counted from 1 for the next one.
    void Refuse(int first, int last);
    // From this allocation on, only memory that the module frees is available.
    void ExhaustFrom(int allocation);
    // Stops refusing. True if anything was refused.
    bool StopRefusing();

    // The blocks that were allocated since this object was created, and not freed.
    std::size_t LiveBlocks() const { return live.size(); }

    // Between these two calls runs code that leaks its blocks if memory is refused. A refusal ends it, too.
    void BeginCarelessWork();
    void EndCarelessWork();
    // The live blocks of such code that a refusal ended.
    std::size_t CarelesslyLostBlocks() const { return lost.size(); }

    bool IsInPlace() const;

private:
    bool Refuses(std::size_t size);
    void* Remember(void* block);
    void Forget(void* block);
    void Strike(void* block);
    void* Reallocate(void* block, std::size_t size);

    int count = 0;  // allocations since the refusals were set
    int firstRefused = 0;
    int lastRefused = 0;
    bool isExhausted = false;
    std::size_t givenBack = 0;  // bytes that were freed while memory was exhausted
    int refused = 0;
    std::unordered_set<void*> live;
    bool isCareless = false;
    std::unordered_set<void*> careless;  // blocks of the leaking code that is running
    std::unordered_set<void*> lost;

    ReplacedImport<"malloc", void*(std::size_t)> allocate;
    ReplacedImport<"calloc", void*(std::size_t, std::size_t)> allocateCleared;
    ReplacedImport<"realloc", void*(void*, std::size_t)> reallocate;
    ReplacedImport<"free", void(void*)> giveBack;
    ReplacedImport<"abort", void()> giveUp;
};

}  // namespace kvn::test

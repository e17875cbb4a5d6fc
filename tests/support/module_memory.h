// The memory that a module takes from the C library: counted block by block, and refused where a test wants it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <unordered_set>

#include "tests/support/replaced_import.h"

namespace kvn::test {

// Used on one thread, as the module is. A module that gives itself up for want of memory ends the test program.
class ModuleMemory {
public:
    explicit ModuleMemory(HMODULE module);

    // Refuses the allocations with these numbers, counted from 1 for the next one.
    void Refuse(int first, int last);
    // From this allocation on there is no memory left but what the module gives back.
    void ExhaustFrom(int allocation);
    // Nothing is refused any longer. True when anything was.
    bool StopRefusing();

    // What was allocated since the making of this object and not given back.
    std::size_t LiveBlocks() const { return live.size(); }

    // Between these two somebody is at work who loses what he has when his memory is refused; a refusal ends it, too.
    void BeginCarelessWork();
    void EndCarelessWork();
    // Of the live blocks those that were allocated in such work that a refusal ended.
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
    std::size_t givenBack = 0;  // bytes that an exhausted memory has again
    int refused = 0;
    std::unordered_set<void*> live;
    bool isCareless = false;
    std::unordered_set<void*> careless;  // of the work that goes on
    std::unordered_set<void*> lost;

    ReplacedImport<"malloc", void*(std::size_t)> allocate;
    ReplacedImport<"calloc", void*(std::size_t, std::size_t)> allocateCleared;
    ReplacedImport<"realloc", void*(void*, std::size_t)> reallocate;
    ReplacedImport<"free", void(void*)> giveBack;
    ReplacedImport<"abort", void()> giveUp;
};

}  // namespace kvn::test

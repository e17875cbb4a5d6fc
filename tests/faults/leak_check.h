// Checks that a page has released everything after faults.
#pragma once

#include "tests/faults/bare_page.h"
#include "tests/support/module_memory.h"

namespace kvn::test {

// Its constructor measures the state for comparison. The page must be closed, and everything that stays as long as the
// module must already be allocated.
class LeakCheck {
public:
    LeakCheck(const ModuleUnderTest& moduleUnderTest, ModuleMemory& moduleMemory, BarePage& barePage);

    // The module's own memory: cheap enough for every round. The page must be closed.
    void ExpectNoBlocks();
    // The same, and GDI objects and kernel handles.
    void ExpectNothing();

private:
    const ModuleUnderTest& module;
    ModuleMemory& memory;
    BarePage& page;
    std::size_t blocks;
    std::size_t gdiObjects;
    std::size_t kernelHandles;
    int openings;
};

// Opens and closes the page, and throws. What the first page and the first exception allocate for the module's lifetime
// is no leak.
void WarmUp(ModuleMemory& memory, BarePage& page);

// The module's blocks while no page is open, except those that other code has leaked; the page must be closed.
std::size_t BlocksAtRest(const ModuleMemory& memory, BarePage& page);

}  // namespace kvn::test

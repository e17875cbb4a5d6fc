// Whether a page that met with faults has given everything back.
#pragma once

#include "tests/faults/bare_page.h"
#include "tests/support/module_memory.h"

namespace kvn::test {

// Measures when it is made, with the page closed and everything warm that stays as long as the module, what the checks
// compare with.
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

// Opens and closes the page, and throws: what a first page and a first exception make for the module's life is no leak.
void WarmUp(ModuleMemory& memory, BarePage& page);

// The module's blocks that live while there is no page, but for those that others have lost; the page must be closed.
std::size_t BlocksAtRest(const ModuleMemory& memory, BarePage& page);

}  // namespace kvn::test

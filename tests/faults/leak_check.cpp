#include "tests/faults/leak_check.h"

#include <gtest/gtest.h>

#include "tests/support/platform.h"
#include "tests/support/resource_use.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

// Other threads of the process sometimes open a handle.
constexpr std::size_t kHandleSlack = 3;
// A page without a sheet leaves few holes in the tables.
constexpr std::size_t kProbes = 1000;
// Windows may free parts of a window a moment after its end.
constexpr std::chrono::seconds kLateFreeing{5};

}  // namespace

LeakCheck::LeakCheck(const ModuleUnderTest& moduleUnderTest, ModuleMemory& moduleMemory, BarePage& barePage)
    : module(moduleUnderTest),
      memory(moduleMemory),
      page(barePage),
      blocks(BlocksAtRest(memory, page)),
      gdiObjects(CountGdiObjects(kProbes)),
      kernelHandles(CountKernelHandles(kProbes)),
      openings(page.Openings()) {}

void LeakCheck::ExpectNoBlocks() {
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
    EXPECT_EQ(BlocksAtRest(memory, page), blocks);
}

void LeakCheck::ExpectNothing() {
    ExpectNoBlocks();
    // The page reports to the dialog manager that it has handled the end of its window, which leaves the dialog's font
    // behind.
    const auto fonts = static_cast<std::size_t>(page.Openings() - openings);
    const std::size_t limit = gdiObjects + fonts + ObjectsKeptOfAWindow();
    EXPECT_TRUE(ComesTrue([&] { return CountGdiObjects(kProbes) <= limit; }, kLateFreeing))
        << CountGdiObjects(kProbes) << " GDI objects, " << gdiObjects << " before, " << fonts << " fonts";
    EXPECT_LE(CountKernelHandles(kProbes), kernelHandles + kHandleSlack);
}

void WarmUp(ModuleMemory& memory, BarePage& page) {
    page.AddAndOpen();
    page.Close();
    // Causes an exception for which there is no memory.
    memory.Refuse(1, 2);
    EXPECT_EQ(page.MakeFactory(), E_OUTOFMEMORY);
    EXPECT_TRUE(memory.StopRefusing());
}

std::size_t BlocksAtRest(const ModuleMemory& memory, BarePage& page) {
    // A call makes the module fill its reserve.
    page.Add();
    page.Close();
    return memory.LiveBlocks() - memory.CarelesslyLostBlocks();
}

}  // namespace kvn::test

// The memory that Windows itself keeps after an action of a program. It is measured in the test's own process, by the
// same action without the module under test. Wine and Windows differ, and so do versions of Wine.
#pragma once

#include <cstddef>
#include <functional>

namespace kvn::test {

// The blocks and objects that stay after a number of repetitions.
struct LastingCost {
    std::size_t processBlocks = 0;
    std::size_t runtimeBlocks = 0;
    std::size_t runtimeBytes = 0;
    std::size_t gdiObjects = 0;

    LastingCost Of(std::size_t times) const;
};

LastingCost CostOf(const std::function<void()>& deed);

// Runs a thread that shows a text field and ends.
void ShowTextField();

// Runs a thread in which drop-down lists with `entries` entries in total are destroyed without a message to their own
// procedures, and then a text field as above. The page has always closed in this way.
void ShowUnheardChoosers(std::size_t choosers, std::size_t entries);

}  // namespace kvn::test

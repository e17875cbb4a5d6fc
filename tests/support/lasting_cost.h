// What Windows itself keeps of something that a program has done and ended: measured in the test's own process, by
// doing it without the module under test. Wine and Windows differ in it, and one Wine from another.
#pragma once

#include <cstddef>
#include <functional>

namespace kvn::test {

// What stays after a number of times.
struct LastingCost {
    std::size_t processBlocks = 0;
    std::size_t runtimeBlocks = 0;
    std::size_t runtimeBytes = 0;
    std::size_t gdiObjects = 0;

    LastingCost Of(std::size_t times) const;
};

LastingCost CostOf(const std::function<void()>& deed);

// A thread that shows a field for text and ends.
void ShowTextField();

// A thread in which drop-down lists with `entries` entries in all end without a word to their own procedures, and then
// a field for text as above: so the page has always ended.
void ShowUnheardChoosers(std::size_t choosers, std::size_t entries);

}  // namespace kvn::test

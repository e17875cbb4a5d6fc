// Waits for conditions that another process causes, never for a time.
#pragma once

#include <chrono>
#include <stdexcept>
#include <string>

#include "tests/support/waiting.h"

namespace kvn::end_to_end {

// Ends a test that cannot go on; its report shows the text.
class StoryError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// How long the other process may take for anything; even a busy machine needs less.
inline constexpr std::chrono::seconds kPatience{30};

// Repeats the question until the answer counts as true, and returns it.
template <typename Condition>
auto WaitFor(const std::string& what, Condition condition) {
    return test::Await(what, condition, kPatience);
}

}  // namespace kvn::end_to_end

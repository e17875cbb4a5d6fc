// The printed output of a test program, as results of its tests. The output also shows whether the program crashed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kvn::bundle {

enum class Outcome { Passed, Failed, Skipped };

struct TestResult {
    std::string name;
    Outcome outcome = Outcome::Failed;  // also for a test that did not finish
    std::string printed;                // the output of the test, with its reasons
};

std::vector<TestResult> ParseTestOutput(std::string_view output);

}  // namespace kvn::bundle

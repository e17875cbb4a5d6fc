// What a test program has printed, as results of its tests. Printed lines tell of a program that crashed, too.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kvn::bundle {

enum class Outcome { Passed, Failed, Skipped };

struct TestResult {
    std::string name;
    Outcome outcome = Outcome::Failed;  // also that of a test that has not come to its end
    std::string printed;                // what the test printed, its reasons among it
};

std::vector<TestResult> ParseTestOutput(std::string_view output);

}  // namespace kvn::bundle

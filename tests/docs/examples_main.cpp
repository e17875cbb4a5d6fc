// The tests of the documents' examples. Started as "docs_examples_tests --write", the program makes the examples again.
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "tests/docs/examples_folder.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    kvn::docs::writesExamples =
        std::any_of(argv, argv + argc, [](std::string_view argument) { return argument == kvn::docs::kWriteOption; });
    return RUN_ALL_TESTS();
}

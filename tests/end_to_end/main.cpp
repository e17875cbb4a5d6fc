// The tests, and the browser's double: started as "end_to_end_tests --record-opening RECORD FILE", the program writes
// FILE's name into the file RECORD.
#include <gtest/gtest.h>
#include <windows.h>

#include <string_view>

#include "tests/end_to_end/help_opening.h"
#include "tests/end_to_end/stored_state.h"

int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == kvn::end_to_end::kRecordOpening) {
        kvn::end_to_end::WriteFileBytes(std::wstring(argv[2], argv[2] + std::string_view(argv[2]).size()), argv[3]);
        return 0;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

// Where the examples of the documents are kept, and whether they are to be made anew.
#pragma once

#include <string>

namespace kvn::docs {

inline constexpr char kWriteOption[] = "--write";

// With its final separator, as a program under Wine knows it.
inline std::string ExamplesFolder() {
    return std::string("Z:") + KVN_EXAMPLES_FOLDER;
}

// Set by the command line: the examples are written instead of compared.
inline bool writesExamples = false;

}  // namespace kvn::docs

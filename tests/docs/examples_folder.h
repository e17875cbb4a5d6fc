// The folder of the documents' examples, and whether they are to be made again.
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

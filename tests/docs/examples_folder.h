// The folder of the documents' examples, and whether to make them again.
#pragma once

#include <string>

namespace kvn::docs {

inline constexpr char kWriteOption[] = "--write";

// With its final separator, as a path for programs under Wine.
inline std::string ExamplesFolder() {
    return std::string("Z:") + KVN_EXAMPLES_FOLDER;
}

// Set by the command line: the examples are written instead of compared.
inline bool writesExamples = false;

}  // namespace kvn::docs

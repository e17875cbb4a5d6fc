// A profile document as in a file, but in memory, since a file for each run would be slow.
#pragma once

#include <tinyxml.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "model/profile_document.h"
#include "tests/fuzz/fuzz_input.h"

namespace kvn::fuzz {

inline std::string Written(const model::ProfileSet& profiles, const model::TextCodec& codec) {
    TiXmlDocument document;
    model::BuildProfileDocument(profiles, codec, document);
    char* printed = nullptr;
    std::size_t length = 0;
    std::unique_ptr<std::FILE, decltype(&std::fclose)> stream(open_memstream(&printed, &length), &std::fclose);
    Require(stream != nullptr, "there is memory to print into");
    Require(document.SaveFile(stream.get()), "a document is printed");
    stream.reset();
    const std::unique_ptr<char, decltype(&std::free)> owner(printed, &std::free);
    return {printed, length};
}

}  // namespace kvn::fuzz

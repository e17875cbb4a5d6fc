// Any bytes: TinyXML gets through what the guard lets pass, and nests it no deeper than the guard counted.
#include <tinyxml.h>

#include <algorithm>

#include "model/xml_guard.h"
#include "tests/fuzz/fuzz_input.h"

using namespace kvn;

namespace {

// One byte of the input stands for this run, so that a few changes of it make a deep document.
constexpr char kDeepByte = '\x01';
constexpr std::size_t kRunLength = model::kMaxXmlDepth - 1;

std::string Expanded(const std::string& bytes) {
    std::string document;
    for (const char byte : bytes) {
        if (byte == kDeepByte) {
            for (std::size_t count = 0; count < kRunLength; ++count) document += "<a>";
        } else {
            document += byte;
        }
    }
    return document;
}

std::size_t DepthBelow(const TiXmlNode& node) {
    std::size_t depth = 0;
    for (const TiXmlElement* child = node.FirstChildElement(); child; child = child->NextSiblingElement()) {
        depth = std::max(depth, 1 + DepthBelow(*child));
    }
    return depth;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    const auto prepared = model::PrepareXml(Expanded(input.Bytes()));
    if (!prepared) return 0;
    fuzz::Require(!prepared->empty() && prepared->find('\0') == std::string::npos, "no zero gets past the guard");

    TiXmlBase::SetCondenseWhiteSpace(false);
    TiXmlDocument document;
    document.SetTabSize(0);
    document.Parse(prepared->c_str(), nullptr, TIXML_ENCODING_LEGACY);
    fuzz::Require(DepthBelow(document) <= model::kMaxXmlDepth, "no document is deeper than the guard allows");
    return 0;
}

// Any bytes: TinyXML can parse what the guard accepts, and nests it no deeper than the guard counted.
#include <tinyxml.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "model/xml_guard.h"
#include "tests/fuzz/fuzz_input.h"

using namespace kvn;

namespace {

// One byte of the input stands for many copies of a piece, so that a few changed bytes make a deep document, or seem to
// end one.
struct Run {
    char byte;
    std::string_view piece;
    std::size_t length;
};
constexpr std::array<Run, 2> kRuns{
    {{'\x01', "<a>", model::kMaxXmlDepth - 1}, {'\x02', "</a>", model::kMaxXmlDepth - 1}}};

std::string Expanded(const std::string& bytes) {
    std::string document;
    for (const char byte : bytes) {
        const auto run = std::find_if(kRuns.begin(), kRuns.end(), [=](const Run& row) { return row.byte == byte; });
        if (run == kRuns.end()) {
            document += byte;
        } else {
            for (std::size_t count = 0; count < run->length; ++count) document += run->piece;
        }
    }
    return document;
}

void RequireFewAttributes(const TiXmlElement& element) {
    std::size_t count = 0;
    for (const TiXmlAttribute* each = element.FirstAttribute(); each; each = each->Next()) ++count;
    fuzz::Require(count <= model::kMaxXmlAttributes, "no element has more attributes than the guard allows");
}

std::size_t DepthBelow(const TiXmlNode& node) {
    std::size_t depth = 0;
    for (const TiXmlElement* child = node.FirstChildElement(); child; child = child->NextSiblingElement()) {
        RequireFewAttributes(*child);
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

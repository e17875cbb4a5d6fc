// Checks a file's bytes before TinyXML parses them. TinyXML recurses with every nested element, searches an element's
// attributes one by one, and drops a text of only white space. The guard refuses a document that would harm TinyXML,
// and changes a good one so that nothing in it is lost.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kvn::model {

// A profile file with every list full has a tenth of the bytes and a sixth of the elements.
inline constexpr std::size_t kMaxXmlBytes = std::size_t{32} * 1024 * 1024;
// Elements, comments and anything else that begins with "<", except end tags; and attributes.
inline constexpr std::size_t kMaxXmlElements = 500'000;
inline constexpr std::size_t kMaxXmlDepth = 64;
// Of one element; a profile file has no attributes.
inline constexpr std::size_t kMaxXmlAttributes = 256;

// Returns the document in a form that TinyXML may parse: line ends are single line feeds, a text of only white space
// between a start tag and its end tag is in a CDATA section, and blanks replace the declaration, which is not used, and
// the inside of processing instructions. Nothing if it is empty, too large or too deep, or has a zero, too many
// attributes, an unfinished tag or an ill-formed character reference.
std::optional<std::string> PrepareXml(std::string document);

}  // namespace kvn::model

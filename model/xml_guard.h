// What stands between a file's bytes and TinyXML: TinyXML recurses with every nested element, searches an element's
// attributes one by one, and drops a text of white space only. Here a document that would hurt it is turned away, and
// one that is fine is changed so that nothing in it gets lost.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace kvn::model {

// A profile file with every list full has a tenth of the bytes and a sixth of the elements.
inline constexpr std::size_t kMaxXmlBytes = std::size_t{32} * 1024 * 1024;
// Elements, comments and whatever else begins with "<", end tags aside; and attributes.
inline constexpr std::size_t kMaxXmlElements = 500'000;
inline constexpr std::size_t kMaxXmlDepth = 64;
// Of one element; a profile file has none.
inline constexpr std::size_t kMaxXmlAttributes = 256;

// The document as TinyXML may parse it: line ends are single line feeds, a text of white space only between a start tag
// and its end tag is in a CDATA section, and blanks stand for the declaration, which nobody reads, as for the inside of
// a processing instruction. Nothing when it is empty, too large, too deep, or holds a zero, too many attributes, a tag
// without end or a character reference that is not one.
std::optional<std::string> PrepareXml(std::string document);

}  // namespace kvn::model

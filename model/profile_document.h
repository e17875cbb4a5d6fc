// The profile file's document: a mouse's profiles as XML (profile_writer.cpp), and back (profile_reader.cpp). Text goes
// through a code page (text_codec.h).
#pragma once

#include <cstddef>
#include <string>

#include "model/profile.h"
#include "model/text_codec.h"

class TiXmlDocument;

namespace kvn::model {

// In characters; longer texts are truncated when read.
inline constexpr std::size_t kMaxTextLength = 1024;

struct DocumentContext {
    const TextCodec& codec;
    std::wstring arbitraryKeyText;  // the heading that a key combination's text may carry
};

// The profiles of a document, in its order. A field whose element is missing has freshRecord's value; a setting that is
// out of its range, or not a number, is kAbnormalValue. A gesture's function is not checked. Empty if the document is
// broken or holds no profile.
ProfileSet ParseProfileDocument(std::string document, const ProfileRecord& freshRecord, const DocumentContext& context);

// Fills an empty document with the profiles. The set must not be empty; vid, pid and selection are the first record's.
// Returns the number of its elements, CDATA sections and declarations; a document with more than kMaxXmlElements
// (xml_guard.h) could not be read back.
std::size_t BuildProfileDocument(const ProfileSet& profiles, const TextCodec& codec, TiXmlDocument& document);

}  // namespace kvn::model

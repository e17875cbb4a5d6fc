// The profile file's document: a model's profiles as XML (profile_writer.cpp), and back (profile_reader.cpp). Text goes
// through a code page (text_codec.h).
#pragma once

#include <cstddef>
#include <string>

#include "model/profile.h"
#include "model/text_codec.h"

class TiXmlDocument;

namespace kvn::model {

// A text that is read keeps at most so many characters.
inline constexpr std::size_t kMaxTextLength = 1024;

struct DocumentContext {
    const TextCodec& codec;
    std::wstring arbitraryKeyText;  // the heading that a key combination's text may carry
};

// The profiles of a document, in its order. A field whose element is missing has freshRecord's value; a setting out of
// its range, or a number that is none, is kAbnormalValue. A gesture's function is taken as it stands. Empty when the
// document is broken or holds no profile.
ProfileSet ParseProfileDocument(std::string document, const ProfileRecord& freshRecord, const DocumentContext& context);

// Fills an empty document with the profiles. The set must not be empty; vid, pid and selection are the first record's.
// Returns how many elements, CDATA sections and declarations it has; one of more than kMaxXmlElements (xml_guard.h)
// would not be read back.
std::size_t BuildProfileDocument(const ProfileSet& profiles, const TextCodec& codec, TiXmlDocument& document);

}  // namespace kvn::model

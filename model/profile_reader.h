// A profile file's elements, for code that reads or checks them (profile_reader.cpp).
#pragma once

#include <tinyxml.h>

#include <cstdint>
#include <optional>
#include <string>

#include "model/profile_document.h"

namespace kvn::model {

class ParsedDocument {
public:
    explicit ParsedDocument(std::string bytes);
    ParsedDocument(const ParsedDocument&) = delete;
    ParsedDocument& operator=(const ParsedDocument&) = delete;

    // Null if the document is broken or has no element.
    const TiXmlElement* Root() const { return root; }

private:
    TiXmlDocument document;
    const TiXmlElement* root = nullptr;
};

// A decimal number as the C library's text-to-integer conversion reads it: it may begin with blanks and a sign, and
// everything after its last digit is ignored. Nothing if there is no digit or the number does not fit.
std::optional<std::int32_t> NumberOf(const TiXmlElement& element);

// An element's text; nothing if it is longer than kMaxTextLength.
std::optional<std::wstring> FittingText(const TiXmlElement& element, const TextCodec& codec);

// Like ParseProfileDocument.
ProfileSet ReadProfiles(const TiXmlElement& root, const ProfileRecord& freshRecord, const DocumentContext& context);

}  // namespace kvn::model

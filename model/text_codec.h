// The text form of the profile file: wide text as bytes of a code page, and an escape for what the code page cannot
// hold.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kvn::model {

// A code page. ASCII is the same in all of them.
class TextCodec {
public:
    virtual ~TextCodec() = default;

    // The bytes of the text; nothing if it contains a zero or a character that the code page lacks.
    virtual std::optional<std::string> Encode(std::wstring_view text) const = 0;

    // The text of the bytes. A byte that is no character of the code page becomes U+FFFD.
    virtual std::wstring Decode(std::string_view bytes) const = 0;
};

// The escaped form: characters that the code page lacks, control characters, ">" and an "&" before "#" are written as
// XML character references in lower-case hexadecimal (&#x416;), which a reader without this rule shows unchanged. The
// profile file marks an escaped text with a CDATA section. No other text is in one, so a text that only looks escaped
// is read correctly.
std::string EncodeEscaped(std::wstring_view text, const TextCodec& codec);

// The text of a decoded escaped form. An ill-formed reference stays as it is.
std::wstring Unescape(std::wstring_view escaped);

}  // namespace kvn::model

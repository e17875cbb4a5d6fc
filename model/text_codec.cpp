#include "model/text_codec.h"

#include <charconv>
#include <cstdint>

namespace kvn::model {
namespace {

constexpr std::uint32_t kMaxCodePoint = 0x10FFFF;
constexpr std::size_t kMaxHexDigits = 6;
constexpr std::wstring_view kReferenceStart = L"&#x";
constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Takes the next character off the front of the text: a pair of surrogates counts as one.
std::wstring_view TakeCharacter(std::wstring_view& text) {
    const bool isPair = kWideIsUtf16 && text.size() >= 2 && IsHighSurrogate(static_cast<std::uint32_t>(text[0])) &&
                        IsLowSurrogate(static_cast<std::uint32_t>(text[1]));
    const std::wstring_view character = text.substr(0, isPair ? 2 : 1);
    text.remove_prefix(character.size());
    return character;
}

std::uint32_t CodePointOf(std::wstring_view character) {
    const auto first = static_cast<std::uint32_t>(character[0]);
    if (character.size() == 1) return first;
    return 0x10000 + ((first - 0xD800) << 10) + (static_cast<std::uint32_t>(character[1]) - 0xDC00);
}

void AppendCodePoint(std::uint32_t codePoint, std::wstring& text) {
    if (kWideIsUtf16 && codePoint >= 0x10000) {
        text += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
    } else {
        text += static_cast<wchar_t>(codePoint);
    }
}

// Whether the character would end the CDATA section, look like a reference, or be lost if it is not escaped.
bool MustBeEscaped(std::wstring_view character, std::wstring_view rest) {
    const wchar_t first = character[0];
    return first < L' ' || first == L'\x7F' || first == L'>' || (first == L'&' && rest.starts_with(L'#'));
}

std::string ReferenceTo(std::uint32_t codePoint) {
    char digits[8];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), codePoint, 16).ptr;
    return "&#x" + std::string(digits, end) + ';';
}

// The value of at most kMaxHexDigits hexadecimal digits that name a code point; nothing for any other text.
std::optional<std::uint32_t> ParseHexDigits(std::wstring_view digits) {
    if (digits.empty()) return std::nullopt;
    std::uint32_t value = 0;
    for (const wchar_t digit : digits) {
        std::uint32_t number = 0;
        if (digit >= L'0' && digit <= L'9') {
            number = static_cast<std::uint32_t>(digit - L'0');
        } else if (digit >= L'a' && digit <= L'f') {
            number = static_cast<std::uint32_t>(digit - L'a') + 10;
        } else {
            return std::nullopt;
        }
        value = value * 16 + number;
    }
    if (value > kMaxCodePoint) return std::nullopt;
    return value;
}

// Takes a character reference off the front of the text. If there is none, returns nothing and leaves the text
// unchanged.
std::optional<std::uint32_t> TakeReference(std::wstring_view& text) {
    if (!text.starts_with(kReferenceStart)) return std::nullopt;
    const std::wstring_view digits = text.substr(kReferenceStart.size(), kMaxHexDigits + 1);
    const std::size_t end = digits.find(L';');
    if (end == std::wstring_view::npos) return std::nullopt;
    const auto codePoint = ParseHexDigits(digits.substr(0, end));
    if (codePoint) text.remove_prefix(kReferenceStart.size() + end + 1);
    return codePoint;
}

}  // namespace

std::string EncodeEscaped(std::wstring_view text, const TextCodec& codec) {
    std::string escaped;
    while (!text.empty()) {
        const std::wstring_view character = TakeCharacter(text);
        const auto bytes = MustBeEscaped(character, text) ? std::nullopt : codec.Encode(character);
        escaped += bytes ? *bytes : ReferenceTo(CodePointOf(character));
    }
    return escaped;
}

std::wstring Unescape(std::wstring_view escaped) {
    std::wstring text;
    while (!escaped.empty()) {
        if (const auto codePoint = TakeReference(escaped)) {
            AppendCodePoint(*codePoint, text);
        } else {
            text += escaped.front();
            escaped.remove_prefix(1);
        }
    }
    return text;
}

}  // namespace kvn::model

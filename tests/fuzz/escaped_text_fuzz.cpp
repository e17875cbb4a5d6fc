// Any text comes back from its escaped form, whatever the code page lacks; and any text can be unescaped.
#include "model/text_codec.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/model/test_codecs.h"

using namespace kvn;

namespace {

// A separate reader, written after docs/profile-file.md: "&#x", at most six hexadecimal digits, ";".
std::wstring ReadReferences(const std::wstring& escaped) {
    std::wstring text;
    for (std::size_t at = 0; at < escaped.size();) {
        const std::size_t end = escaped.compare(at, 3, L"&#x") == 0 ? escaped.find(L';', at) : std::wstring::npos;
        const std::wstring digits = end == std::wstring::npos ? std::wstring() : escaped.substr(at + 3, end - at - 3);
        const bool isNumber = !digits.empty() && digits.size() <= 6 &&
                              digits.find_first_not_of(L"0123456789abcdef") == std::wstring::npos;
        if (isNumber && std::stoul(digits, nullptr, 16) <= 0x10FFFF) {
            text += static_cast<wchar_t>(std::stoul(digits, nullptr, 16));
            at = end + 1;
        } else {
            text += escaped[at++];
        }
    }
    return text;
}

void RequireBack(const std::wstring& text, const model::TextCodec& codec) {
    const std::string escaped = model::EncodeEscaped(text, codec);
    fuzz::Require(escaped.find("]]>") == std::string::npos, "an escaped text never ends its section");
    fuzz::Require(escaped.find('\0') == std::string::npos, "an escaped text holds no zero");
    const std::wstring decoded = codec.Decode(escaped);
    fuzz::Require(ReadReferences(decoded) == text, "an escaped text decodes to the original");
    fuzz::Require(model::Unescape(decoded) == text, "an escaped text comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const model::test::LatinCodec latin;
    static const model::test::DoubleByteCodec doubleByte;
    fuzz::FuzzInput input(data, size);
    while (!input.IsAtEnd()) {
        const std::wstring text = input.Text();
        const std::wstring unescaped = model::Unescape(text);
        fuzz::Require(unescaped.size() <= text.size(), "resolving references never makes a text longer");
        for (const model::TextCodec* codec : std::initializer_list<const model::TextCodec*>{&latin, &doubleByte}) {
            RequireBack(text, *codec);
            RequireBack(unescaped, *codec);
        }
    }
    return 0;
}

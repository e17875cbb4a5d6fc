// Any text comes back from its escaped form, whatever the code page lacks; and any text can be looked at for escapes.
#include "model/text_codec.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/model/test_codecs.h"

using namespace kvn;

namespace {

void RequireBack(const std::wstring& text, const model::TextCodec& codec) {
    const std::string escaped = model::EncodeEscaped(text, codec);
    fuzz::Require(escaped.find("]]>") == std::string::npos, "an escaped text never ends its section");
    fuzz::Require(escaped.find('\0') == std::string::npos, "an escaped text holds no zero");
    fuzz::Require(model::Unescape(codec.Decode(escaped)) == text, "an escaped text comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const model::test::LatinCodec latin;
    static const model::test::DoubleByteCodec doubleByte;
    fuzz::FuzzInput input(data, size);
    while (!input.IsAtEnd()) {
        const std::wstring text = input.Text();
        const std::wstring unescaped = model::Unescape(text);
        fuzz::Require(unescaped.size() <= text.size(), "resolving references makes no text longer");
        for (const model::TextCodec* codec : std::initializer_list<const model::TextCodec*>{&latin, &doubleByte}) {
            RequireBack(text, *codec);
            RequireBack(unescaped, *codec);
        }
    }
    return 0;
}

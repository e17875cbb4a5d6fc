#include "model/text_codec.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/model/profile_generator.h"
#include "tests/model/test_codecs.h"

namespace kvn::model {
namespace {

using namespace std::string_literals;

std::wstring EscapedAndBack(const std::wstring& text, const TextCodec& codec) {
    return Unescape(codec.Decode(EncodeEscaped(text, codec)));
}

// A character beyond the first 65536, in as many wide characters as it takes here.
std::wstring Smile() {
    return sizeof(wchar_t) == 2 ? std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)}
                                : std::wstring(1, static_cast<wchar_t>(0x1F600));
}

TEST(EncodeEscapedTest, WritesACharacterThatTheCodePageLacksAsAReference) {
    EXPECT_EQ(EncodeEscaped(L"\x416", test::kLatin), "&#x416;");
    EXPECT_EQ(EncodeEscaped(L"a\x416z", test::kLatin), "a&#x416;z");
    EXPECT_EQ(EncodeEscaped(L"\x416", test::kDoubleByte), "&#x416;");
}

TEST(EncodeEscapedTest, WritesWhatTheCodePageHoldsAsItsBytes) {
    EXPECT_EQ(EncodeEscaped(L"\xE9\x416", test::kLatin), "\xE9&#x416;");
    EXPECT_EQ(EncodeEscaped(L"\x4E02\x4E03\x416", test::kDoubleByte), "\x81\x5C\x81\x5D&#x416;");
}

TEST(EncodeEscapedTest, WritesAPairOfSurrogatesAsOneReference) {
    EXPECT_EQ(EncodeEscaped(Smile(), test::kLatin), "&#x1f600;");
}

TEST(EncodeEscapedTest, WritesLoneSurrogatesAsTheyAre) {
    const std::wstring high(1, static_cast<wchar_t>(0xD83D));
    const std::wstring low(1, static_cast<wchar_t>(0xDE00));
    EXPECT_EQ(EncodeEscaped(high, test::kLatin), "&#xd83d;");
    EXPECT_EQ(EncodeEscaped(low, test::kLatin), "&#xde00;");
    EXPECT_EQ(EncodeEscaped(low + high, test::kLatin), "&#xde00;&#xd83d;");
    EXPECT_EQ(EncodeEscaped(high + L"a", test::kLatin), "&#xd83d;a");
}

TEST(EncodeEscapedTest, EscapesWhatWouldNotSurviveInACdataSection) {
    EXPECT_EQ(EncodeEscaped(L"]]>", test::kLatin), "]]&#x3e;");
    EXPECT_EQ(EncodeEscaped(L"\r\n\t", test::kLatin), "&#xd;&#xa;&#x9;");
    EXPECT_EQ(EncodeEscaped(L"\x7F"s + L'\0', test::kLatin), "&#x7f;&#x0;");
    EXPECT_EQ(EncodeEscaped(L" <b> ", test::kLatin), " <b&#x3e; ");
}

TEST(EncodeEscapedTest, EscapesAnAmpersandOnlyBeforeANumberSign) {
    EXPECT_EQ(EncodeEscaped(L"&#x41;", test::kLatin), "&#x26;#x41;");
    EXPECT_EQ(EncodeEscaped(L"a & b &amp;", test::kLatin), "a & b &amp;");
    EXPECT_EQ(EncodeEscaped(L"&\x416", test::kLatin), "&&#x416;");
}

TEST(UnescapeTest, ResolvesReferences) {
    EXPECT_EQ(Unescape(L"&#x416;"), L"\x416");
    EXPECT_EQ(Unescape(L"a&#x41;b&#x1f600;"), L"aAb" + Smile());
    EXPECT_EQ(Unescape(L"&#x0;"), L"\0"s);
    EXPECT_EQ(Unescape(L"&#x26;#x41;"), L"&#x41;");
    EXPECT_EQ(Unescape(L"&#x000041;"), L"A");
    EXPECT_EQ(Unescape(L"&&#x41;;"), L"&A;");
}

TEST(UnescapeTest, KeepsWhatIsNoWellFormedReference) {
    for (const wchar_t* text : {L"", L"&", L"&#", L"&#x", L"&#x;", L"&#x41", L"&#x4g;", L"&#65;", L"&amp;", L"&#X41;",
                                L"&#x4A;", L"&#x110000;", L"&#xffffff;", L"&#x0000041;", L"&#x 41;", L"& #x41;"}) {
        EXPECT_EQ(Unescape(text), text);
    }
}

TEST(EscapedTextTest, ThatOnlyLooksEscapedComesBack) {
    for (const wchar_t* text : {L"&#x41;", L"&#x26;#x41;", L"&&#x41;", L"&#x26;&#x41;", L"&#", L"&\x416#x41;"}) {
        EXPECT_EQ(EscapedAndBack(text, test::kLatin), text);
        EXPECT_EQ(EscapedAndBack(text, test::kDoubleByte), text);
    }
}

TEST(EscapedTextTest, OfAnyCharacterComesBackAndNeverEndsItsSection) {
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        const std::wstring text{L']', L']', static_cast<wchar_t>(code), L'&', L'#'};
        for (const TextCodec* codec :
             {static_cast<const TextCodec*>(&test::kLatin), static_cast<const TextCodec*>(&test::kDoubleByte)}) {
            const std::string escaped = EncodeEscaped(text, *codec);
            ASSERT_EQ(escaped.find("]]>"), std::string::npos) << code;
            ASSERT_EQ(Unescape(codec->Decode(escaped)), text) << code;
        }
    }
}

TEST(EscapedTextTest, GeneratedTextsComeBack) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        test::ProfileGenerator generator(seed, L"\xE9\xDF\x4E02\x4E03\x4E5B");
        for (int count = 0; count < 100; ++count) {
            const std::wstring text = generator.Text();
            ASSERT_EQ(EscapedAndBack(text, test::kLatin), text);
            ASSERT_EQ(EscapedAndBack(text, test::kDoubleByte), text);
        }
    }
}

}  // namespace
}  // namespace kvn::model

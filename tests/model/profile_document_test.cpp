// Writing and reading held against each other.
#include "model/profile_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/model/printed_document.h"
#include "tests/model/profile_generator.h"
#include "tests/model/test_codecs.h"

namespace kvn::model {
namespace {

constexpr std::uint32_t kSeedCount = 200;

// As a file on disk has it.
std::string WithWindowsLineEnds(const std::string& document) {
    std::string converted;
    for (const char byte : document) {
        if (byte == '\n') converted += '\r';
        converted += byte;
    }
    return converted;
}

std::wstring AllCharactersOf(const test::DoubleByteCodec&) {
    std::wstring characters;
    for (std::uint32_t index = 0; index < test::DoubleByteCodec::kCharacterCount; ++index) {
        characters += static_cast<wchar_t>(test::DoubleByteCodec::kFirstCharacter + index);
    }
    return characters;
}

void ExpectComesBack(const ProfileSet& profiles, const TextCodec& codec) {
    const std::string document = test::Written(profiles, codec);
    ASSERT_EQ(test::Parsed(document, codec), profiles) << document;
    ASSERT_EQ(test::Parsed(WithWindowsLineEnds(document), codec), profiles) << document;
    ASSERT_EQ(test::Written(test::Parsed(document, codec), codec), document);
}

void ExpectTextComesBack(const std::wstring& text, const TextCodec& codec) {
    ProfileRecord record = DefaultProfileRecord();
    record.name = text;
    record.settings.applications = {{text, text}};
    record.settings.gestures = {{text, 1, text, {}}};
    ExpectComesBack({record}, codec);
}

void ExpectGeneratedProfilesComeBack(const std::wstring& alphabet, const TextCodec& codec) {
    for (std::uint32_t seed = 1; seed <= kSeedCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        ExpectComesBack(test::ProfileGenerator(seed, alphabet).Profiles(), codec);
        if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(ProfileDocumentTest, GeneratedProfilesComeBackThroughASingleByteCodePage) {
    ExpectGeneratedProfilesComeBack(L"\xA0\xA9\xC4\xE9\xF7\xFF", test::kLatin);
}

TEST(ProfileDocumentTest, GeneratedProfilesComeBackThroughADoubleByteCodePage) {
    ExpectGeneratedProfilesComeBack(AllCharactersOf(test::kDoubleByte), test::kDoubleByte);
}

TEST(ProfileDocumentTest, TextsThatAReaderMightChangeComeBack) {
    const std::wstring zero(1, L'\0');
    for (const std::wstring& text : {std::wstring(L""),
                                     std::wstring(L" "),
                                     std::wstring(L"   "),
                                     std::wstring(L"\t"),
                                     std::wstring(L"\n"),
                                     std::wstring(L"\r"),
                                     std::wstring(L"\r\n"),
                                     std::wstring(L"\v\f"),
                                     std::wstring(L" leading and trailing "),
                                     std::wstring(L"double  blanks"),
                                     std::wstring(L"\"quotes\" 'and' <brackets> & more"),
                                     std::wstring(L"&#x41;"),
                                     std::wstring(L"&amp;"),
                                     std::wstring(L"a&#xb"),
                                     std::wstring(L"]]>"),
                                     std::wstring(L"<![CDATA[x]]>"),
                                     std::wstring(L"<!-- x -->"),
                                     std::wstring(L"</profname>"),
                                     std::wstring(L"\x41F\x440\x438\x432\x435\x442"),
                                     std::wstring(L" \x41F "),
                                     std::wstring(L"\x41F\n"),
                                     zero,
                                     L"a" + zero + L"b",
                                     L"\xD83D" + std::wstring(L"\xDE00"),
                                     std::wstring(L"\xDE00\xD83D"),
                                     std::wstring(L"\xFFFD\xFFFE\xFFFF"),
                                     std::wstring(kMaxTextLength, L'\xD83D'),
                                     std::wstring(kMaxTextLength, L' ')}) {
        ExpectTextComesBack(text, test::kLatin);
        ExpectTextComesBack(text, test::kDoubleByte);
    }
}

TEST(ProfileDocumentTest, EveryCharacterComesBack) {
    std::wstring text;
    for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
        text += static_cast<wchar_t>(code);
        if (text.size() < kMaxTextLength) continue;
        ExpectTextComesBack(text, test::kLatin);
        ExpectTextComesBack(text, test::kDoubleByte);
        text.clear();
    }
}

TEST(ProfileDocumentTest, EveryCharacterComesBackOnItsOwn) {
    std::vector<ApplicationEntry> entries;
    for (std::uint32_t code = 0; code <= 0x500; ++code) {
        const std::wstring character(1, static_cast<wchar_t>(code));
        entries.push_back({character, character + L' '});
    }
    ProfileRecord record = DefaultProfileRecord();
    record.settings.applications = entries;
    ExpectComesBack({record}, test::kLatin);
    ExpectComesBack({record}, test::kDoubleByte);
}

TEST(ProfileDocumentTest, EveryDoubleByteCharacterComesBackInEveryCompany) {
    for (const wchar_t character : AllCharactersOf(test::kDoubleByte)) {
        ExpectTextComesBack(std::wstring(1, character), test::kDoubleByte);
        ExpectTextComesBack(std::wstring(1, character) + L"]>", test::kDoubleByte);
        ExpectTextComesBack(std::wstring(1, character) + L"]>\x416", test::kDoubleByte);
    }
}

TEST(ProfileDocumentTest, ALongerTextIsCut) {
    ProfileRecord record = DefaultProfileRecord();
    for (const wchar_t character : {L'x', L'\xE9', L'\x416', L'\n'}) {
        record.name.assign(5000, character);
        const ProfileSet profiles = test::Parsed(test::Written({record}, test::kLatin), test::kLatin);
        ASSERT_EQ(profiles.size(), 1U);
        EXPECT_EQ(profiles[0].name, std::wstring(1024, character));
    }
}

TEST(ProfileDocumentTest, NumbersOutOfRangeComeBackAsAbnormal) {
    ProfileRecord record = DefaultProfileRecord();
    record.settings.values.items.fill(1000);
    const ProfileSet profiles = test::Parsed(test::Written({record}, test::kLatin), test::kLatin);
    ASSERT_EQ(profiles.size(), 1U);
    for (const std::int32_t number : profiles[0].settings.values.items) EXPECT_EQ(number, kAbnormalValue);
}

TEST(ProfileDocumentTest, EveryRecordCarriesTheFirstOnesHead) {
    ProfileSet profiles(2, DefaultProfileRecord());
    profiles[0].vid = 7;
    profiles[0].selectedIndex = 1;
    profiles[1].pid = 9;
    const ProfileSet read = test::Parsed(test::Written(profiles, test::kLatin), test::kLatin);
    profiles[1] = profiles[0];
    EXPECT_EQ(read, profiles);
}

TEST(ProfileDocumentTest, AGapBetweenKeysIsClosed) {
    ProfileRecord record = DefaultProfileRecord();
    record.settings.etcKeys[ButtonSlot::Left].codes = {17, kNoKey, 18};
    const ProfileSet profiles = test::Parsed(test::Written({record}, test::kLatin), test::kLatin);
    ASSERT_EQ(profiles.size(), 1U);
    EXPECT_EQ(profiles[0].settings.etcKeys[ButtonSlot::Left].codes, (std::array{17, 18, kNoKey}));
}

TEST(ProfileDocumentTest, ThousandsOfProfilesProgramsAndGesturesComeBack) {
    ProfileRecord record = DefaultProfileRecord();
    ProfileSet profiles(3000, record);
    record.settings.applications.assign(5000, {L"Editor", L"C:\\e.exe"});
    record.settings.gestures.assign(5000, {L"URDL", 37, L"memo", {{162, 86, kNoKey}}});
    profiles.push_back(record);
    EXPECT_TRUE(test::Parsed(test::Written(profiles, test::kLatin), test::kLatin) == profiles);
}

}  // namespace
}  // namespace kvn::model

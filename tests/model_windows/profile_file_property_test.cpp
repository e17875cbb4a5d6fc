// Any text of the user comes back from the file, on every code page.
#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

#include "model/locale_codec.h"
#include "model/profile_file.h"
#include "tests/model/printed_document.h"
#include "tests/model/profile_generator.h"
#include "tests/model_windows/code_pages.h"
#include "tests/model_windows/files.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {
namespace {

constexpr std::uint32_t kSeedCount = 60;

class ProfileFileOfCodePageTest : public testing::TestWithParam<test::CodePageLocale> {};

INSTANTIATE_TEST_SUITE_P(CodePages, ProfileFileOfCodePageTest, testing::ValuesIn(test::kCodePageLocales),
                         [](const auto& tested) { return std::to_string(tested.param.codePage); });

TEST_P(ProfileFileOfCodePageTest, GeneratedProfilesComeBack) {
    const LocaleCodec codec(GetParam().locale);
    const std::wstring alphabet = test::AlphabetOf(GetParam().codePage);
    for (std::uint32_t seed = 1; seed <= kSeedCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ProfileSet profiles = test::ProfileGenerator(seed, alphabet).Profiles();
        ASSERT_EQ(test::Parsed(test::Written(profiles, codec), codec), profiles);
    }
}

TEST_P(ProfileFileOfCodePageTest, EveryTextOfItIsStoredInItsOwnBytes) {
    const LocaleCodec codec(GetParam().locale);
    ProfileRecord record = DefaultProfileRecord();
    for (const test::CodedCharacter& coded : test::CharactersOf(GetParam().codePage)) {
        record.settings.applications.push_back({std::wstring(3, coded.character), L""});
    }
    const std::string document = test::Written({record}, codec);
    EXPECT_EQ(document.find("CDATA"), std::string::npos);
    EXPECT_TRUE(test::Parsed(document, codec) == ProfileSet{record});
}

TEST(ProfileFilePropertyTest, EveryCharacterComesBackThroughEveryCodePage) {
    for (const char* localeName :
         {"English_United States.1252", "Japanese_Japan.932", "Chinese_China.936", "Russian_Russia.1251", "C"}) {
        const LocaleCodec codec(localeName);
        ProfileRecord record = DefaultProfileRecord();
        std::wstring text;
        for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
            text += static_cast<wchar_t>(code);
            if (text.size() < kMaxTextLength) continue;
            record.settings.applications.push_back({text, text});
            text.clear();
        }
        for (std::uint32_t code = 0; code <= 0x3FF; ++code) {
            record.settings.applications.push_back({std::wstring(1, static_cast<wchar_t>(code)), L""});
        }
        EXPECT_TRUE(test::Parsed(test::Written({record}, codec), codec) == ProfileSet{record}) << localeName;
    }
}

// The program has the user's code page, so its tests are run under several.
TEST(ProfileFilePropertyTest, GeneratedProfilesComeBackFromDisk) {
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    const std::wstring alphabet = test::AlphabetOf(test::UserCodePage());
    for (std::uint32_t seed = 1000; seed < 1000 + kSeedCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ProfileSet profiles = test::ProfileGenerator(seed, alphabet).Profiles();
        ASSERT_TRUE(SaveProfileFile(path, profiles));
        ProfileSet loaded;
        ASSERT_EQ(LoadProfileFile(path, loaded), profiles.size());
        ASSERT_EQ(loaded, profiles);
    }
    EXPECT_EQ(test::NamesIn(user.ApplicationData()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
}

// A text that only one of the code pages has, its bytes there, and its form in a file of any other.
struct TextOfOneCodePage {
    UINT codePage;
    std::wstring text;
    std::string bytes;
    std::string escaped;
};
const std::vector<TextOfOneCodePage> kTextsOfOneCodePage{
    {1252, L"\x192\x178", "\x83\x9F", "<![CDATA[&#x192;&#x178;]]>"},
    {932, L"\xFF8A\xFF83", "\xCA\xC3", "<![CDATA[&#xff8a;&#xff83;]]>"},
    {936, L"\x7B80\x4EEC", "\xBC\xF2\xC3\xC7", "<![CDATA[&#x7b80;&#x4eec;]]>"},
    {1251, L"\x40B\x40F", "\x8E\x8F", "<![CDATA[&#x40b;&#x40f;]]>"},
    {CP_UTF8, L"\x85\x86", "\x85\x86", "<![CDATA[&#x85;&#x86;]]>"},
    {0, L"\x939\x93F \xD83D\xDE00", "none", "<![CDATA[&#x939;&#x93f; &#x1f600;]]>"}};

TEST(ProfileFilePropertyTest, ATextOutsideTheUsersCodePageIsEscapedAndOneInsideIsNot) {
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    const UINT codePage = test::UserCodePage();
    int inside = 0;
    for (const TextOfOneCodePage& row : kTextsOfOneCodePage) {
        SCOPED_TRACE("text of " + std::to_string(row.codePage) + " under " + std::to_string(codePage));
        ProfileRecord record = DefaultProfileRecord();
        record.name = row.text;
        record.settings.applications = {{row.text, L"C:\\" + row.text}};
        record.settings.gestures = {{L"U", 37, row.text, {}}};
        ASSERT_TRUE(SaveProfileFile(path, {record}));
        const std::string bytes = test::ReadBytes(path);
        const bool isInside = row.codePage == codePage;
        inside += isInside ? 1 : 0;
        EXPECT_EQ(bytes.find("<profname>" + row.bytes + "</profname>") != std::string::npos, isInside);
        EXPECT_EQ(bytes.find(row.escaped) != std::string::npos, !isInside);
        ProfileSet loaded;
        LoadProfileFile(path, loaded);
        EXPECT_TRUE(loaded == ProfileSet{record});
    }
    EXPECT_EQ(inside, 1);
}

// In such a locale the C library treats the no-break space as white space, which TinyXML drops.
TEST(ProfileFilePropertyTest, ALocaleOfTheHostProgramTakesNothingAway) {
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    ProfileRecord record = DefaultProfileRecord();
    for (const test::CodedCharacter& coded : test::CharactersOf(test::UserCodePage())) {
        record.settings.applications.push_back(
            {std::wstring(1, coded.character), std::wstring(2, coded.character) + L' '});
    }
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* hostLocale : {"", "English_United States.1252", "Japanese_Japan.932"}) {
        ASSERT_NE(std::setlocale(LC_ALL, hostLocale), nullptr);
        const bool saved = SaveProfileFile(path, {record});
        ProfileSet loaded;
        LoadProfileFile(path, loaded);
        std::setlocale(LC_ALL, before.c_str());
        EXPECT_TRUE(saved) << hostLocale;
        EXPECT_TRUE(loaded == ProfileSet{record}) << hostLocale;
    }
}

}  // namespace
}  // namespace kvn::model

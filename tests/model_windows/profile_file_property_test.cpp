// Whatever the user writes comes back from the file, on every code page.
#include <gtest/gtest.h>

#include <clocale>
#include <string>

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

void ExpectGeneratedProfilesComeBackThrough(const char* localeName, UINT codePage) {
    const LocaleCodec codec(localeName);
    const std::wstring alphabet = test::AlphabetOf(codePage);
    for (std::uint32_t seed = 1; seed <= kSeedCount; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ProfileSet profiles = test::ProfileGenerator(seed, alphabet).Profiles();
        ASSERT_EQ(test::Parsed(test::Written(profiles, codec), codec), profiles);
    }
}

TEST(ProfileFileProperty, GeneratedProfilesComeBackThroughCodePage1252) {
    ExpectGeneratedProfilesComeBackThrough("English_United States.1252", 1252);
}

TEST(ProfileFileProperty, GeneratedProfilesComeBackThroughCodePage932) {
    ExpectGeneratedProfilesComeBackThrough("Japanese_Japan.932", 932);
}

TEST(ProfileFileProperty, EveryCharacterComesBackThroughEveryCodePage) {
    for (const char* localeName : {"English_United States.1252", "Japanese_Japan.932", "Russian_Russia.1251", "C"}) {
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

TEST(ProfileFileProperty, EveryTextOfACodePageIsStoredInItsOwnBytes) {
    for (const UINT codePage : {1252U, 932U}) {
        const LocaleCodec codec(codePage == 932 ? "Japanese_Japan.932" : "English_United States.1252");
        ProfileRecord record = DefaultProfileRecord();
        for (const test::CodedCharacter& coded : test::CharactersOf(codePage)) {
            record.settings.applications.push_back({std::wstring(3, coded.character), L""});
        }
        const std::string document = test::Written({record}, codec);
        EXPECT_EQ(document.find("CDATA"), std::string::npos) << codePage;
        EXPECT_TRUE(test::Parsed(document, codec) == ProfileSet{record}) << codePage;
    }
}

// The program runs with the user's code page as it is: its tests are run for several.
TEST(ProfileFileProperty, GeneratedProfilesComeBackFromDisk) {
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    const std::wstring alphabet = test::AlphabetOf(GetACP());
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

// In such a locale the C library counts the no-break space as white space, which TinyXML drops.
TEST(ProfileFileProperty, ALocaleOfTheHostProgramTakesNothingAway) {
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    ProfileRecord record = DefaultProfileRecord();
    for (const test::CodedCharacter& coded : test::CharactersOf(GetACP())) {
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

// The host program names a locale in its own string table: this one names Japanese, whatever the user's code page.
#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "model/locale_codec.h"
#include "model/profile_file.h"
#include "tests/model/profile_generator.h"
#include "tests/model_windows/code_pages.h"
#include "tests/model_windows/files.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {
namespace {

TEST(HostLocaleTest, IsTheCodePageOfTheProfileFile) {
    ASSERT_NE(test::UserCodePage(), 932U);
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    ProfileSet profiles(1, DefaultProfileRecord());
    profiles[0].name = L"\x8868\x30E1\x30E2";
    profiles[0].settings.applications = {{L"Caf\xE9", L"C:\\"}};
    ASSERT_TRUE(SaveProfileFile(path, profiles));

    const std::string bytes = test::ReadBytes(path);
    EXPECT_NE(bytes.find("<profname>\x95\x5C\x83\x81\x83\x82</profname>"), std::string::npos);
    EXPECT_NE(bytes.find("<![CDATA[Caf&#xe9;]]>"), std::string::npos);

    ProfileSet loaded;
    EXPECT_EQ(LoadProfileFile(path, loaded), 1U);
    EXPECT_EQ(loaded, profiles);
}

TEST(HostLocaleTest, HoldsEveryCharacterOfItsCodePage) {
    const LocaleCodec codec = LocaleCodec::OfHostProgram();
    for (const test::CodedCharacter& coded : test::CharactersOf(932)) {
        ASSERT_EQ(codec.Decode(coded.bytes), std::wstring(1, coded.character));
    }
}

TEST(HostLocaleTest, GeneratedProfilesComeBackFromDisk) {
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    const std::wstring alphabet = test::AlphabetOf(932);
    for (std::uint32_t seed = 2000; seed < 2040; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const ProfileSet profiles = test::ProfileGenerator(seed, alphabet).Profiles();
        ASSERT_TRUE(SaveProfileFile(path, profiles));
        ProfileSet loaded;
        LoadProfileFile(path, loaded);
        ASSERT_EQ(loaded, profiles);
    }
}

TEST(HostLocaleTest, IsNeverMadeTheProgramsOwn) {
    const kvn::test::SandboxedUser user;
    const std::wstring path = user.ApplicationData() + L"\\VID0abcPID00a1.xml";
    const std::string before = std::setlocale(LC_ALL, nullptr);
    ProfileSet profiles(1, DefaultProfileRecord());
    EXPECT_TRUE(SaveProfileFile(path, profiles));
    LoadProfileFile(path, profiles);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

}  // namespace
}  // namespace kvn::model

// Files that are exchanged between users of different code pages. The tests run under each kind of code page.
#include <algorithm>
#include <string>

#include "tests/model_windows/code_pages.h"
#include "tests/service_transfer/transfer_fixture.h"

namespace kvn::service_test {
namespace {

using service::ExportSettings;
using service::kDone;

class CodePagesTest : public SettingsTransferTest {
protected:
    // Texts in one code page each, in none, beyond 16 bits, and half a pair.
    static constexpr wchar_t kTexts[] =
        L"caf\xE9 \x20AC \x3042\x8868\xFF7C \x0416\x0451 \x0939 \xD83D\xDE00 \xD83D &#x41; \\ ~ <&>\t";

    static model::ProfileSet Profiles() {
        model::ProfileRecord first = model::DefaultProfileRecord();
        first.vid = 0x0ABC;
        first.pid = 0x00A1;
        first.selectedIndex = 1;
        first.name = kTexts;
        first.settings.applications = {{kTexts, std::wstring(L"C:\\") + kTexts}};
        first.settings.gestures = {{L"UD", 6, kTexts, {}}};
        model::ProfileRecord second = first;
        second.name += L"2";
        return {first, second};
    }

    // The expected export under every code page.
    static std::string ExportedText(const std::string& name) { return "<![CDATA[" + name + "]]>"; }
};

TEST_F(CodePagesTest, AnExportIsTheSameUnderEachOfThem) {
    model::test::UserCodePage();
    CreateDirectoryW(File(L"KORVEN").c_str(), nullptr);
    CreateDirectoryW(Folder().c_str(), nullptr);
    ASSERT_TRUE(model::SaveProfileFile(ProfileFile(), Profiles()));
    ASSERT_EQ(ExportSettings(File(L"out.xml")).exitCode, kDone);
    const std::string exported = test::ReadFileText(File(L"out.xml"));
    EXPECT_TRUE(std::ranges::all_of(exported, [](char byte) { return byte > 0; }));
    EXPECT_NE(exported.find(ExportedText("caf&#xe9; &#x20ac; &#x3042;&#x8868;&#xff7c; &#x416;&#x451; &#x939; &#x1f600; "
                                         "&#xd83d; &#x26;#x41; \\ ~ <&&#x3e;&#x9;")),
              std::string::npos)
        << exported;
}

TEST_F(CodePagesTest, AnExportIsTakenUnderEachOfThem) {
    ASSERT_TRUE(model::ExportProfileFile(File(L"in.xml"), Profiles()));
    ASSERT_EQ(Import(File(L"in.xml")).exitCode, kDone);
    EXPECT_EQ(Loaded(ProfileFile()), Profiles());
    ASSERT_EQ(ExportSettings(File(L"out.xml")).exitCode, kDone);
    EXPECT_EQ(test::ReadFileText(File(L"out.xml")), test::ReadFileText(File(L"in.xml")));
}

TEST_F(CodePagesTest, AProfileFileIsReadInTheUsersOwn) {
    model::ProfileSet profiles = Profiles();
    profiles[0].name = model::test::TextOfUsersCodePage();
    profiles[1].name = model::test::AlphabetOf(model::test::UserCodePage()).substr(0, 20);
    ASSERT_TRUE(model::SaveProfileFile(File(L"in.xml"), profiles));
    ASSERT_FALSE(std::ranges::all_of(test::ReadFileText(File(L"in.xml")), [](char byte) { return byte > 0; }));
    ASSERT_EQ(Import(File(L"in.xml")).exitCode, kDone);
    EXPECT_EQ(Loaded(ProfileFile()), profiles);
}

}  // namespace
}  // namespace kvn::service_test

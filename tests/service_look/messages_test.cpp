// The messages that the service shows by itself.
#include <gtest/gtest.h>

#include "model/settings_store.h"
#include "platform/unique_resource.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"
#include "tests/service_faults/application_fixture.h"
#include "tests/service_look/taskbar.h"
#include "tests/service_look/user_language.h"
#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::service_test {
namespace {

using Texts = std::vector<std::wstring>;

constexpr wchar_t kGreeting[] =
    L"The buttons of your mouse can be given other functions. Double-click this icon to open the settings.";

class MessagesTest : public test::ApplicationTest {
protected:
    // The service's thread is this one.
    void ExpectOnly(const std::wstring& text) {
        EXPECT_TRUE(test::ComesTrue([&] {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
            return !taskbar.Balloons().empty();
        }));
        EXPECT_EQ(taskbar.Balloons(), Texts{text});
    }
    static std::wstring ProfileFile() { return model::SettingsFolder() + L"VID0abcPID00a1.xml"; }
    static void WriteProfiles() {
        model::MakeFolder(model::SettingsFolder());
        test::WriteFileText(ProfileFile(), test::ProfileFileText({test::ProfileText("Work")}));
    }

    const English english;
    Taskbar taskbar;
};

TEST_F(MessagesTest, FirstStartOfAUserIsGreetedOnce) {
    ASSERT_TRUE(Start(L""));
    EXPECT_EQ(taskbar.Balloons(), Texts{kGreeting});
    End();
    ASSERT_TRUE(Start(L""));
    EXPECT_EQ(taskbar.Balloons(), Texts{kGreeting});
}

TEST_F(MessagesTest, AChosenMouseIsNeverGreetedAndKeepsNoGreetingFromComing) {
    ASSERT_TRUE(Start());
    EXPECT_EQ(taskbar.Balloons(), Texts{});
    End();
    ASSERT_TRUE(Start(L""));
    EXPECT_EQ(taskbar.Balloons(), Texts{kGreeting});
}

TEST(TextTest, InsertedTextIsNotSearchedAgain) {
    const Japanese japanese;
    EXPECT_EQ(service::Text(IDS_PLACE_IN_PROFILE, L"lbutton", L"%1"), L"プロファイル '%1' の lbutton");
}

TEST_F(MessagesTest, AProfileFileThatCannotBeReadIsNamed) {
    WriteProfiles();
    const platform::UniqueFile held(
        CreateFileW(ProfileFile().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held);
    ASSERT_TRUE(Start());
    ExpectOnly(L"The profiles cannot be read. Open the settings and save them again. File: " + ProfileFile());
    EXPECT_EQ(taskbar.KindOfBalloon(), DWORD{NIIF_WARNING});
}

TEST_F(MessagesTest, AProfileFileThatThePageHasSetAsideIsNamedByItsNewName) {
    WriteProfiles();
    ASSERT_TRUE(Start());
    const std::wstring newName = model::SettingsFolder() + L"VID0abcPID00a1.broken-1.xml";
    ASSERT_TRUE(MoveFileW(ProfileFile().c_str(), newName.c_str()));
    ExpectOnly(L"The profiles could not be read. They were kept under a new name: " + newName);
}

TEST_F(MessagesTest, AHookThatCannotBeInstalledIsReported) {
    const test::ReplacedImport<"SetWindowsHookExW", HHOOK(int, HOOKPROC, HINSTANCE, DWORD)> install{
        GetModuleHandleW(nullptr), [](int, HOOKPROC, HINSTANCE, DWORD) -> HHOOK { return nullptr; }};
    ASSERT_TRUE(install.IsInPlace());
    ASSERT_TRUE(Start());
    ExpectOnly(
        L"The mouse cannot be watched, so its buttons do what they do without this program. Exit it here and start it "
        L"again.");
    EXPECT_EQ(taskbar.KindOfBalloon(), DWORD{NIIF_ERROR});
    EXPECT_NE(StatusText().find(L"hook=dead"), std::wstring::npos);
}

}  // namespace
}  // namespace kvn::service_test

// The hub follows the program in front: real programs, each with its own profile.
#include <gtest/gtest.h>

#include <optional>

#include "tests/service_settings/hub_fixture.h"
#include "tests/service_settings/shown_program.h"
#include "tests/support/owning_types.h"
#include "tests/support/replaced_import.h"

namespace kvn::service {
namespace {

using kvn::test::ComesTrue;
using kvn::test::ProfileText;
using kvn::test::ShownProgram;

std::string Program(const std::wstring& path) {
    return "<name></name><path>" + std::string(path.begin(), path.end()) + "</path>";
}

class SettingsHubProgramsTest : public HubFixture {
protected:
    void SetUp() override {
        WriteFile({ProfileText("Default", {{"lbutton", "5"}}),
                   ProfileText("Edit", {{"lbutton", "6"}, {"Application", Program(editorPath)}}),
                   ProfileText("Play", {{"lbutton", "7"}, {"Application", Program(L"player.EXE")}})});
        other.BringToFront();
        StartReadHub();
        ASSERT_TRUE(BecomesInForce(L"Default"));
    }
    // By the window event or, where none comes, by the next look.
    void BringToFront(const ShownProgram& program) {
        program.BringToFront();
        MoveMouse();
    }

    kvn::test::ProgramFolder folder;
    const std::wstring editorPath = folder.Copy(L"editor.exe");
    const ShownProgram other{folder.Copy(L"other.exe")};
    const ShownProgram editor{editorPath};
    const ShownProgram player{folder.Copy(L"player.exe")};
};

TEST_F(SettingsHubProgramsTest, EachProgramHasItsProfileWhileItIsInFront) {
    BringToFront(editor);
    ASSERT_TRUE(BecomesInForce(L"Edit"));
    EXPECT_EQ(Hub().InForce().why, Why::Program);
    EXPECT_EQ(LeftFunction(), 6);
    BringToFront(player);
    ASSERT_TRUE(BecomesInForce(L"Play"));
    EXPECT_EQ(LeftFunction(), 7);
    BringToFront(other);
    ASSERT_TRUE(BecomesInForce(L"Default"));
    EXPECT_EQ(Hub().InForce().why, Why::Selected);
    EXPECT_EQ(Hub().SwitchCount(), 3U);
    EndHub();
    EXPECT_EQ(Heard().size(), 4U);
    EXPECT_EQ(Windows(), (std::vector{other.Window(), editor.Window(), player.Window(), other.Window()}));
}

TEST_F(SettingsHubProgramsTest, TheSelectedProfileIsTheRegistrysAlsoWithItsProgramInFront) {
    WriteFile({ProfileText("Default"), ProfileText("Edit", {{"lbutton", "6"}, {"Application", Program(editorPath)}})},
              1);
    SetNumber(L"BindKeyLeft", 10);
    ASSERT_TRUE(LeftFunctionBecomes(10));
    BringToFront(editor);
    ASSERT_TRUE(ComesTrue([this] { return Hub().InForce().why == Why::Program; }));
    EXPECT_EQ(Hub().InForce().name, L"Edit");
    EXPECT_EQ(LeftFunction(), 10);
}

TEST_F(SettingsHubProgramsTest, AForcedProfileStaysWhateverIsInFront) {
    ASSERT_TRUE(Hub().Force(L"Play"));
    ASSERT_TRUE(BecomesInForce(L"Play"));
    BringToFront(editor);
    ASSERT_TRUE(ComesTrue([this] { return Windows().back() == editor.Window(); }));
    EXPECT_EQ(Hub().InForce().name, L"Play");
    Hub().ForceAutomatic();
    EXPECT_TRUE(BecomesInForce(L"Edit"));
}

TEST_F(SettingsHubProgramsTest, AFileThatChangesCountsForTheProgramInFront) {
    BringToFront(editor);
    ASSERT_TRUE(BecomesInForce(L"Edit"));
    WriteFile({ProfileText("Default"), ProfileText("New", {{"Application", Program(editorPath)}})});
    ASSERT_TRUE(BecomesInForce(L"New"));
    DeleteFileW(FilePath().c_str());
    EXPECT_TRUE(BecomesInForce(L"Default"));
}

TEST_F(SettingsHubProgramsTest, AProgramThatKeepsItsPathSecretHasTheSelectedProfile) {
    BringToFront(editor);
    ASSERT_TRUE(BecomesInForce(L"Edit"));
    const kvn::test::ReplacedImport<"OpenProcess", decltype(OpenProcess)> refused(
        GetModuleHandleW(nullptr), [](DWORD, BOOL, DWORD) -> HANDLE { return nullptr; });
    BringToFront(player);
    EXPECT_TRUE(BecomesInForce(L"Default"));
}

TEST_F(SettingsHubProgramsTest, AWindowOfTheServiceLeavesTheProgramBeforeIt) {
    BringToFront(editor);
    ASSERT_TRUE(BecomesInForce(L"Edit"));
    const test::UniqueWindow own(CreateWindowExW(0, L"STATIC", L"own", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 50, 50,
                                                 nullptr, nullptr, nullptr, nullptr));
    SetForegroundWindow(own.Get());
    ASSERT_EQ(GetForegroundWindow(), own.Get());
    MoveMouse();
    // It has looked once it sleeps again.
    ASSERT_TRUE(ComesTrue([this] { return activity.isSomeoneAsleep.load(); }));
    EXPECT_EQ(Hub().InForce().name, L"Edit");
    EXPECT_EQ(Windows().back(), editor.Window());
}

}  // namespace
}  // namespace kvn::service

#include "service/settings/front_program.h"

#include <gtest/gtest.h>

#include "service/settings/program_path.h"
#include "tests/service_settings/shown_program.h"
#include "tests/support/owning_types.h"
#include "tests/support/replaced_import.h"

namespace kvn::service {
namespace {

using kvn::test::ShownProgram;

class FrontProgramTest : public testing::Test {
protected:
    bool IsInFront(const std::wstring& program) const {
        return IsSameText(ResolvedPath(front.Program()), ResolvedPath(program));
    }

    kvn::test::ProgramFolder folder;
    const std::wstring editor = folder.Copy(L"editor.exe");
    const std::wstring player = folder.Copy(L"player.exe");
    FrontProgram front;
};

TEST_F(FrontProgramTest, IsThatOfTheWindowInFront) {
    const ShownProgram first(editor);
    const ShownProgram second(player);
    first.BringToFront();
    FrontProgram::Change change = front.Look();
    EXPECT_TRUE(change.isOtherWindow && change.isOtherProgram);
    EXPECT_TRUE(IsInFront(editor));
    EXPECT_EQ(front.Window(), first.Window());

    change = front.Look();
    EXPECT_FALSE(change.isOtherWindow || change.isOtherProgram);

    second.BringToFront();
    change = front.Look();
    EXPECT_TRUE(change.isOtherWindow && change.isOtherProgram);
    EXPECT_TRUE(IsInFront(player));
}

TEST_F(FrontProgramTest, TwoWindowsOfOneProgramAreOneProgram) {
    const ShownProgram first(editor);
    const ShownProgram second(editor);
    first.BringToFront();
    front.Look();
    second.BringToFront();
    const FrontProgram::Change change = front.Look();
    EXPECT_TRUE(change.isOtherWindow);
    EXPECT_FALSE(change.isOtherProgram);
}

TEST_F(FrontProgramTest, TheServicesOwnWindowsDoNotCount) {
    const ShownProgram first(editor);
    first.BringToFront();
    front.Look();
    const test::UniqueWindow own(CreateWindowExW(0, L"STATIC", L"own", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 50, 50,
                                                 nullptr, nullptr, nullptr, nullptr));
    SetForegroundWindow(own.Get());
    ASSERT_EQ(GetForegroundWindow(), own.Get());
    const FrontProgram::Change change = front.Look();
    EXPECT_FALSE(change.isOtherWindow || change.isOtherProgram);
    EXPECT_TRUE(IsInFront(editor));
}

TEST_F(FrontProgramTest, TheListOfProgramsDoesNotCount) {
    const ShownProgram first(editor);
    first.BringToFront();
    front.Look();
    const ShownProgram list(player, L"TaskSwitcherWnd");
    list.BringToFront();
    const FrontProgram::Change change = front.Look();
    EXPECT_FALSE(change.isOtherWindow || change.isOtherProgram);
    EXPECT_TRUE(IsInFront(editor));
}

TEST_F(FrontProgramTest, APathThatIsRefusedIsNoProgram) {
    const ShownProgram first(editor);
    const ShownProgram second(player);
    first.BringToFront();
    front.Look();
    const kvn::test::ReplacedImport<"OpenProcess", decltype(OpenProcess)> refused(
        GetModuleHandleW(nullptr), [](DWORD, BOOL, DWORD) -> HANDLE { return nullptr; });
    ASSERT_TRUE(refused.IsInPlace());
    second.BringToFront();
    EXPECT_TRUE(front.Look().isOtherProgram);
    EXPECT_EQ(front.Program(), L"");
}

TEST_F(FrontProgramTest, AStoreAppMayAppearInItsFrameLater) {
    const ShownProgram frame(editor, L"ApplicationFrameWindow");
    frame.BringToFront();
    front.Look();
    EXPECT_EQ(front.Program(), L"");
    const ShownProgram app(player, L"Windows.UI.Core.CoreWindow", frame.Title());
    const FrontProgram::Change change = front.Look();
    EXPECT_FALSE(change.isOtherWindow);
    EXPECT_TRUE(change.isOtherProgram);
    EXPECT_TRUE(IsInFront(player));
}

}  // namespace
}  // namespace kvn::service

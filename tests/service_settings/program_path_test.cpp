#include "service/settings/program_path.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/service_settings/shown_program.h"

namespace kvn::service {
namespace {

namespace fs = std::filesystem;

bool IsProgram(const std::wstring& entry, const std::wstring& program) {
    ProgramComparison comparison;
    comparison.SetProgram(program);
    return comparison.IsProgram(entry);
}

std::wstring InCapitals(std::wstring path) {
    CharUpperBuffW(path.data(), static_cast<DWORD>(path.size()));
    return path;
}

std::wstring ShortPath(const std::wstring& path) {
    wchar_t shortPath[MAX_PATH]{};
    GetShortPathNameW(path.c_str(), shortPath, MAX_PATH);
    return shortPath;
}

class ProgramPathTest : public testing::Test {
protected:
    kvn::test::ProgramFolder folder;
    const std::wstring program = folder.Copy(L"A rather long name.exe");
};

TEST_F(ProgramPathTest, OfAProcessIsThatOfItsFile) {
    const kvn::test::ShownProgram shown(program);
    EXPECT_TRUE(IsSameText(ResolvedPath(ProgramOfProcess(shown.ProcessId())), ResolvedPath(program)));
    EXPECT_EQ(ProgramOfProcess(0), L"");
}

TEST_F(ProgramPathTest, IsComparedWithoutRegardToCase) {
    EXPECT_TRUE(IsProgram(program, program));
    EXPECT_TRUE(IsProgram(InCapitals(program), program));
    EXPECT_FALSE(IsProgram(program + L"x", program));
    EXPECT_FALSE(IsProgram(folder.Copy(L"other.exe"), program));
}

TEST_F(ProgramPathTest, MayHaveShortNames) {
    const std::wstring shortPath = ShortPath(program);
    ASSERT_NE(shortPath, program);
    EXPECT_TRUE(IsProgram(shortPath, program));
    EXPECT_TRUE(IsProgram(program, shortPath));
}

TEST_F(ProgramPathTest, MayGoThroughFoldersAndBack) {
    const std::wstring roundabout =
        folder.Path() + L"\\..\\" + fs::path(folder.Path()).filename().wstring() + L"\\A rather long name.exe";
    EXPECT_TRUE(IsProgram(roundabout, program));
}

TEST_F(ProgramPathTest, WithoutAFolderIsAFileNameInAnyFolder) {
    EXPECT_TRUE(IsProgram(L"a rather LONG name.exe", program));
    EXPECT_TRUE(IsProgram(L"editor.exe", L"Q:\\no such\\Editor.exe"));
    EXPECT_FALSE(IsProgram(L"long name.exe", program));
    EXPECT_FALSE(IsProgram(L"no such", L"Q:\\no such\\Editor.exe"));
}

TEST_F(ProgramPathTest, WithoutAFolderMayBeTheNameThatItWasStartedBy) {
    const std::wstring shortPath = ShortPath(program);
    ASSERT_NE(shortPath, program);
    EXPECT_TRUE(IsProgram(fs::path(shortPath).filename().wstring(), shortPath));
    EXPECT_TRUE(IsProgram(L"A rather long name.exe", shortPath));
}

TEST_F(ProgramPathTest, OfAFileThatIsNotThereIsComparedAsText) {
    EXPECT_TRUE(IsProgram(L"Q:\\No Such\\editor.exe", L"q:\\no such\\EDITOR.exe"));
    EXPECT_FALSE(IsProgram(L"Q:\\other\\editor.exe", L"Q:\\no such\\editor.exe"));
}

TEST_F(ProgramPathTest, OfNoProgramEqualsNothing) {
    EXPECT_FALSE(IsProgram(L"", L""));
    EXPECT_FALSE(IsProgram(L"", program));
    EXPECT_FALSE(IsProgram(program, L""));
}

TEST_F(ProgramPathTest, MayBeAnything) {
    for (const std::wstring& entry :
         {std::wstring(L"\\\\?\\"), std::wstring(L"\\"), std::wstring(L":"), std::wstring(L"C:"), std::wstring(L"//"),
          std::wstring(40'000, L'x'), L"C:\\" + std::wstring(40'000, L'x'), std::wstring(L"C:\\a\0b", 6),
          std::wstring(L"C:\\*?<>|\"")}) {
        EXPECT_FALSE(IsProgram(entry, program)) << testing::PrintToString(entry.substr(0, 20));
    }
}

TEST_F(ProgramPathTest, OfAStoreAppIsNotThatOfItsFrame) {
    const std::wstring app = folder.Copy(L"app.exe");
    const kvn::test::ShownProgram frame(program, L"ApplicationFrameWindow");
    EXPECT_EQ(ProcessOfWindow(frame.Window()), 0U);
    const kvn::test::ShownProgram inside(app, L"Windows.UI.Core.CoreWindow", frame.Title());
    EXPECT_EQ(ProcessOfWindow(frame.Window()), inside.ProcessId());
}

}  // namespace
}  // namespace kvn::service

// The profile file when the disk fails.
#include <gtest/gtest.h>
#include <shlwapi.h>

#include <stdexcept>
#include <string>

#include "tests/model_windows/intercepted_rename.h"
#include "tests/model_windows/profile_file_failure_fixture.h"
#include "tests/support/held_file.h"
#include "tests/support/replaced_import.h"

namespace kvn::model {
namespace {

using kvn::test::ReplacedImport;

TEST_F(ProfileFileFailureTest, ASaveThatCannotBeginLeavesTheOldFile) {
    ASSERT_TRUE(CreateDirectoryW((Path() + L".saving").c_str(), nullptr));
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(test::ReadBytes(Path()), OldBytes());
}

TEST_F(ProfileFileFailureTest, ASaveIntoAMissingFolderFails) {
    EXPECT_FALSE(SaveProfileFile(Folder() + L"\\missing\\VID0abcPID00a1.xml", OneProfile(L"new")));
    EXPECT_FALSE(SaveProfileFile(L"", OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailureTest, ASaveOverAFolderFails) {
    const std::wstring folder = Folder() + L"\\folder.xml";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    EXPECT_FALSE(SaveProfileFile(folder, OneProfile(L"new")));
    EXPECT_EQ(test::NamesIn(Folder()), (std::vector<std::wstring>{L"VID0abcPID00a1.xml", L"folder.xml"}));
}

TEST_F(ProfileFileFailureTest, TheNewFileIsWholeBeforeTheOldOneGoes) {
    const std::wstring elsewhere = Folder() + L"\\elsewhere.xml";
    LARGE_INTEGER sizeWhenRenamed{};
    std::wstring target;
    const test::InterceptedRename rename([&](HANDLE file, const std::wstring& newPath) {
        target = newPath;
        GetFileSizeEx(file, &sizeWhenRenamed);
        return test::RenameOpenFile(file, elsewhere);
    });
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(target, Path());
    EXPECT_EQ(test::ReadBytes(Path()), OldBytes());
    EXPECT_EQ(test::ReadBytes(elsewhere).size(), static_cast<std::size_t>(sizeWhenRenamed.QuadPart));
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(elsewhere, list), 1U);
    EXPECT_EQ(list, OneProfile(L"new"));
}

TEST_F(ProfileFileFailureTest, ASaveIsClosedToOthersUntilItIsInItsPlace) {
    const std::wstring saving = Path() + L".saving";
    int renames = 0;
    const test::InterceptedRename rename([&](HANDLE file, const std::wstring& newPath) {
        ++renames;
        FinishOrRemoveInterruptedSave(Path());
        EXPECT_TRUE(PathFileExistsW(saving.c_str()));
        EXPECT_FALSE(MoveFileW(saving.c_str(), (Folder() + L"\\stolen.xml").c_str()));
        EXPECT_THROW(
            static_cast<void>(kvn::test::HoldFile(saving, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE)),
            std::runtime_error);
        return test::RenameOpenFile(file, newPath);
    });
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(renames, 1);
    ProfileSet list;
    LoadProfileFile(Path(), list);
    EXPECT_EQ(list, OneProfile(L"new"));
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
}

TEST_F(ProfileFileFailureTest, WhatAnInterruptedSaveLeftIsRemovedWithoutTheFile) {
    test::WriteBytes(Path() + L".saving", "<data><profile>");
    FinishOrRemoveInterruptedSave(Path());
    ExpectOldFileAndNoOther();
    FinishOrRemoveInterruptedSave(Path());
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailureTest, ASaveThatLacksOnlyItsRenamingIsFinishedWhenTheFileIsGone) {
    ASSERT_TRUE(MoveFileW(Path().c_str(), (Path() + L".saving").c_str()));
    FinishOrRemoveInterruptedSave(Path());
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailureTest, ASaveThatLacksOnlyItsRenamingIsRemovedWhenTheFileIsThere) {
    ASSERT_TRUE(SaveProfileFile(Folder() + L"\\other.xml", OneProfile(L"new")));
    ASSERT_TRUE(MoveFileW((Folder() + L"\\other.xml").c_str(), (Path() + L".saving").c_str()));
    FinishOrRemoveInterruptedSave(Path());
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailureTest, ASaveThatCannotBeFinishedIsKeptAndFinishedLater) {
    ASSERT_TRUE(MoveFileW(Path().c_str(), (Path() + L".saving").c_str()));
    {
        const ReplacedImport<"MoveFileExW", BOOL(LPCWSTR, LPCWSTR, DWORD)> move(ThisProgram(),
                                                                                [](LPCWSTR, LPCWSTR, DWORD) {
                                                                                    SetLastError(ERROR_DISK_FULL);
                                                                                    return FALSE;
                                                                                });
        ASSERT_TRUE(move.IsInPlace());
        FinishOrRemoveInterruptedSave(Path());
    }
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml.saving"});
    FinishOrRemoveInterruptedSave(Path());
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailureTest, ASaveIsNotFinishedOverAFileThatComesMeanwhile) {
    ASSERT_TRUE(SaveProfileFile(Folder() + L"\\other.xml", OneProfile(L"new")));
    ASSERT_TRUE(MoveFileW((Folder() + L"\\other.xml").c_str(), (Path() + L".saving").c_str()));
    int questions = 0;
    const auto missing = [&questions](LPCWSTR) {
        ++questions;
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_FILE_ATTRIBUTES;
    };
    const ReplacedImport<"GetFileAttributesW", DWORD(LPCWSTR)> attributes(ThisProgram(), missing);
    FinishOrRemoveInterruptedSave(Path());
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(test::ReadBytes(Path()), OldBytes());
}

TEST_F(ProfileFileFailureTest, AReadOnlyFileIsNotReplaced) {
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectOldFileAndNoOther();
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    ASSERT_TRUE(SetFileAttributesW(Path().c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
}

// Explorer marks customised folders as read-only. Files in them can still be written.
TEST_F(ProfileFileFailureTest, AFolderMarkedReadOnlyIsSavedInto) {
    ASSERT_TRUE(SetFileAttributesW(Folder().c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    SetFileAttributesW(Folder().c_str(), FILE_ATTRIBUTE_NORMAL);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_EQ(list, OneProfile(L"new"));
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
}

TEST_F(ProfileFileFailureTest, AFileOnADriveThatDoesNotAnswerDoesNotCountAsMissing) {
    for (const DWORD error : {DWORD{ERROR_BAD_NETPATH}, DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_NOT_READY}}) {
        const auto absent = [error](LPCWSTR) {
            SetLastError(error);
            return INVALID_FILE_ATTRIBUTES;
        };
        const ReplacedImport<"GetFileAttributesW", DWORD(LPCWSTR)> attributes(ThisProgram(), absent);
        ASSERT_TRUE(attributes.IsInPlace());
        EXPECT_FALSE(SetAsideProfileFile(Path())) << error;
        ExpectOldFileAndNoOther();
    }
}

TEST_F(ProfileFileFailureTest, ABrokenFileThatCannotBeMovedStaysWhereItIs) {
    test::WriteBytes(Path(), "broken");
    const ReplacedImport<"MoveFileExW", BOOL(LPCWSTR, LPCWSTR, DWORD)> move(ThisProgram(), [](LPCWSTR, LPCWSTR, DWORD) {
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    });
    EXPECT_FALSE(SetAsideProfileFile(Path()));
    EXPECT_EQ(test::ReadBytes(Path()), "broken");
}

}  // namespace
}  // namespace kvn::model

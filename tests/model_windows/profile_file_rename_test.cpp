// The renaming that puts a save's file in place, when a folder or a file system refuses it.
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/intercepted_rename.h"
#include "tests/model_windows/profile_file_failure_fixture.h"
#include "tests/support/replaced_import.h"

namespace kvn::model {
namespace {

using kvn::test::ReplacedImport;
using MoveFunction = BOOL(LPCWSTR, LPCWSTR, DWORD);
using CreateFunction = HANDLE(LPCWSTR, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE);

// The errors of file systems that cannot rename an open file.
constexpr std::array<DWORD, 4> kRenameUnknown{ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER, ERROR_INVALID_FUNCTION,
                                              ERROR_CALL_NOT_IMPLEMENTED};

test::InterceptedRename RenameThatFailsWith(DWORD error) {
    return test::InterceptedRename([error](HANDLE, const std::wstring&) {
        SetLastError(error);
        return FALSE;
    });
}

class ProfileFileRenameTest : public ProfileFileFailureTest {
protected:
    std::wstring Saving() const { return Path() + L".saving"; }

    void ExpectNewFileAndNoOther() const {
        ProfileSet list;
        LoadProfileFile(Path(), list);
        EXPECT_EQ(list, OneProfile(L"new"));
        EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
    }

private:
    ReplacedImport<"Sleep", void(DWORD)> sleep{ThisProgram(), [](DWORD) {}};
};

TEST_F(ProfileFileRenameTest, AFileSystemThatCannotRenameAnOpenFileRenamesAClosedOne) {
    const auto genuine = test::Genuine<MoveFunction>(L"kernel32", "MoveFileExW");
    for (const DWORD error : kRenameUnknown) {
        SCOPED_TRACE(error);
        ASSERT_TRUE(SaveProfileFile(Path(), OneProfile(L"old")));
        const test::InterceptedRename rename = RenameThatFailsWith(error);
        ASSERT_TRUE(rename.IsInPlace());
        int moves = 0;
        const ReplacedImport<"MoveFileExW", MoveFunction> move(
            ThisProgram(), [&](LPCWSTR from, LPCWSTR to, DWORD flags) {
                ++moves;
                EXPECT_EQ(from, Saving());
                EXPECT_EQ(to, Path());
                EXPECT_EQ(flags, DWORD{MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH});
                return genuine(from, to, flags);
            });
        ASSERT_TRUE(move.IsInPlace());
        EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
        EXPECT_EQ(moves, 1);
        ExpectNewFileAndNoOther();
    }
}

TEST_F(ProfileFileRenameTest, AFileThatCannotBeRenamedClosedEitherLeavesTheOldOne) {
    for (const DWORD error : kRenameUnknown) {
        SCOPED_TRACE(error);
        const test::InterceptedRename rename = RenameThatFailsWith(error);
        int moves = 0;
        const ReplacedImport<"MoveFileExW", MoveFunction> move(ThisProgram(), [&moves](LPCWSTR, LPCWSTR, DWORD) {
            ++moves;
            SetLastError(ERROR_NOT_SUPPORTED);
            return FALSE;
        });
        EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
        EXPECT_EQ(moves, 1);
        ExpectOldFileAndNoOther();
    }
}

TEST_F(ProfileFileRenameTest, AClosedFileIsRenamedOnceTheOldOneIsLetGo) {
    const test::InterceptedRename rename = RenameThatFailsWith(ERROR_NOT_SUPPORTED);
    const auto genuine = test::Genuine<MoveFunction>(L"kernel32", "MoveFileExW");
    int moves = 0;
    const ReplacedImport<"MoveFileExW", MoveFunction> move(ThisProgram(), [&](LPCWSTR from, LPCWSTR to, DWORD flags) {
        if (++moves == 3) return genuine(from, to, flags);
        SetLastError(ERROR_SHARING_VIOLATION);
        return FALSE;
    });
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(moves, 3);
    ExpectNewFileAndNoOther();
}

TEST_F(ProfileFileRenameTest, AnyOtherFailureIsNotRetriedAfterClosing) {
    for (const DWORD error : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_DISK_FULL}, DWORD{ERROR_BAD_NETPATH}}) {
        const test::InterceptedRename rename = RenameThatFailsWith(error);
        const ReplacedImport<"MoveFileExW", MoveFunction> move(ThisProgram(), [](LPCWSTR, LPCWSTR, DWORD) {
            ADD_FAILURE() << "the file was renamed by its path";
            return FALSE;
        });
        EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new"))) << error;
        ExpectOldFileAndNoOther();
    }
}

TEST_F(ProfileFileRenameTest, AnUnfinishedFileThatCannotBeDeletedWhileItIsOpenIsDeletedOnceItIsClosed) {
    const ReplacedImport<"SetFileInformationByHandle", BOOL(HANDLE, FILE_INFO_BY_HANDLE_CLASS, void*, DWORD)> nothing(
        ThisProgram(), [](HANDLE, FILE_INFO_BY_HANDLE_CLASS information, void*, DWORD) {
            SetLastError(information == FileRenameInfo ? ERROR_DISK_FULL : ERROR_NOT_SUPPORTED);
            return FALSE;
        });
    ASSERT_TRUE(nothing.IsInPlace());
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileRenameTest, AFolderThatForbidsNewFilesKeepsTheOldOne) {
    const auto genuine = test::Genuine<CreateFunction>(L"kernel32", "CreateFileW");
    int refused = 0;
    {
        const ReplacedImport<"CreateFileW", CreateFunction> create(
            ThisProgram(), [&](LPCWSTR path, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security, DWORD creation,
                               DWORD flags, HANDLE pattern) {
                if (path != Saving()) return genuine(path, access, sharing, security, creation, flags, pattern);
                ++refused;
                SetLastError(ERROR_ACCESS_DENIED);
                return INVALID_HANDLE_VALUE;
            });
        EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
        ProfileSet list;
        EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    }
    EXPECT_GT(refused, 0);
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileRenameTest, AFolderThatForbidsRenamingKeepsTheOldFile) {
    const test::InterceptedRename rename = RenameThatFailsWith(ERROR_ACCESS_DENIED);
    ASSERT_TRUE(rename.IsInPlace());
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileRenameTest, AReadOnlyLeftoverIsWrittenOver) {
    test::WriteBytes(Saving(), "<data><profile>");
    ASSERT_TRUE(SetFileAttributesW(Saving().c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectNewFileAndNoOther();
    EXPECT_EQ(GetFileAttributesW(Path().c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
}

TEST_F(ProfileFileRenameTest, AReadOnlyLeftoverIsRemoved) {
    test::WriteBytes(Saving(), "<data><profile>");
    ASSERT_TRUE(SetFileAttributesW(Saving().c_str(), FILE_ATTRIBUTE_READONLY));
    FinishOrRemoveInterruptedSave(Path());
    ExpectOldFileAndNoOther();
}

// Windows does not overwrite a file marked hidden or system with one that is not, nor a read-only file. Not every file
// system stores these marks, so the test does.
TEST_F(ProfileFileRenameTest, ALeftoverWithAnyMarkIsWrittenOver) {
    const auto genuine = test::Genuine<CreateFunction>(L"kernel32", "CreateFileW");
    for (const DWORD mark : {DWORD{FILE_ATTRIBUTE_HIDDEN}, DWORD{FILE_ATTRIBUTE_SYSTEM}, DWORD{FILE_ATTRIBUTE_READONLY},
                             DWORD{FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM}}) {
        SCOPED_TRACE(mark);
        test::WriteBytes(Saving(), "<data><profile>");
        DWORD marks = mark;
        const ReplacedImport<"SetFileAttributesW", BOOL(LPCWSTR, DWORD)> set(ThisProgram(),
                                                                             [&](LPCWSTR path, DWORD attributes) {
                                                                                 EXPECT_EQ(path, Saving());
                                                                                 marks = attributes;
                                                                                 return TRUE;
                                                                             });
        ASSERT_TRUE(set.IsInPlace());
        const ReplacedImport<"CreateFileW", CreateFunction> create(
            ThisProgram(), [&](LPCWSTR path, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security, DWORD creation,
                               DWORD flags, HANDLE pattern) {
                constexpr DWORD kMarks = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;
                if (path != Saving() || creation != CREATE_ALWAYS || (marks & kMarks & ~flags) == 0)
                    return genuine(path, access, sharing, security, creation, flags, pattern);
                SetLastError(ERROR_ACCESS_DENIED);
                return INVALID_HANDLE_VALUE;
            });
        EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
        ExpectNewFileAndNoOther();
    }
}

}  // namespace
}  // namespace kvn::model

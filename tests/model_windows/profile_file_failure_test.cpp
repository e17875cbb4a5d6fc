// What becomes of the profile file when the disk, or another program, does not play along.
#include <gtest/gtest.h>
#include <io.h>

#include <cstdio>
#include <optional>
#include <string>

#include "model/profile_document.h"
#include "model/profile_file.h"
#include "tests/model_windows/files.h"
#include "tests/model_windows/genuine_function.h"
#include "tests/support/replaced_import.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {
namespace {

using kvn::test::ReplacedImport;

ProfileSet OneProfile(const std::wstring& name) {
    ProfileSet list(1, DefaultProfileRecord());
    list[0].name = name;
    return list;
}

// A folder with one good profile file.
class ProfileFileFailure : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(SaveProfileFile(Path(), OneProfile(L"old")));
        oldBytes = test::ReadBytes(Path());
    }

    const std::wstring& Folder() const { return user.ApplicationData(); }
    std::wstring Path() const { return Folder() + L"\\VID0abcPID00a1.xml"; }
    const std::string& OldBytes() const { return oldBytes; }

    void ExpectOldFileAndNoOther() const {
        EXPECT_EQ(test::ReadBytes(Path()), oldBytes);
        EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
    }

    static HMODULE ThisProgram() { return GetModuleHandleW(nullptr); }

private:
    kvn::test::SandboxedUser user;
    std::string oldBytes;
};

TEST_F(ProfileFileFailure, ASaveThatCannotBeginLeavesTheOldFile) {
    ASSERT_TRUE(CreateDirectoryW((Path() + L".saving").c_str(), nullptr));
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(test::ReadBytes(Path()), OldBytes());
}

TEST_F(ProfileFileFailure, ASaveIntoAMissingFolderFails) {
    EXPECT_FALSE(SaveProfileFile(Folder() + L"\\missing\\VID0abcPID00a1.xml", OneProfile(L"new")));
    EXPECT_FALSE(SaveProfileFile(L"", OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailure, ASaveThatCannotBeFlushedLeavesTheOldFile) {
    const ReplacedImport<"fflush", int(FILE*)> flush(ThisProgram(), [](FILE*) { return EOF; });
    ASSERT_TRUE(flush.IsInPlace());
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailure, ASaveThatDoesNotReachTheDiskLeavesTheOldFile) {
    const ReplacedImport<"_commit", int(int)> commit(ThisProgram(), [](int) { return -1; });
    ASSERT_TRUE(commit.IsInPlace());
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailure, ASaveWhoseFileCannotBeClosedLeavesTheOldFile) {
    const auto genuine = test::Genuine<int(FILE*)>(L"msvcrt", "fclose");
    const ReplacedImport<"fclose", int(FILE*)> close(ThisProgram(), [genuine](FILE* stream) {
        genuine(stream);
        return EOF;
    });
    ASSERT_TRUE(close.IsInPlace());
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailure, ASaveThatCannotReplaceTheFileLeavesIt) {
    const ReplacedImport<"MoveFileExW", BOOL(LPCWSTR, LPCWSTR, DWORD)> move(ThisProgram(), [](LPCWSTR, LPCWSTR, DWORD) {
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    });
    ASSERT_TRUE(move.IsInPlace());
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailure, ASaveOverAFolderFails) {
    const std::wstring folder = Folder() + L"\\folder.xml";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    EXPECT_FALSE(SaveProfileFile(folder, OneProfile(L"new")));
    EXPECT_EQ(test::NamesIn(Folder()), (std::vector<std::wstring>{L"VID0abcPID00a1.xml", L"folder.xml"}));
}

TEST_F(ProfileFileFailure, AListThatCouldNotBeReadBackIsNotSaved) {
    ProfileSet list = OneProfile(L"new");
    list[0].settings.gestures.assign(20'000, {L"U", 37, std::wstring(kMaxTextLength, L'\x41F'), {}});
    EXPECT_FALSE(SaveProfileFile(Path(), list));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileFailure, TheNewFileIsWholeBeforeTheOldOneGoes) {
    const auto genuine = test::Genuine<decltype(MoveFileExW)>(L"kernel32", "MoveFileExW");
    int moves = 0;
    const ReplacedImport<"MoveFileExW", BOOL(LPCWSTR, LPCWSTR, DWORD)> move(
        ThisProgram(), [&](LPCWSTR from, LPCWSTR to, DWORD flags) {
            ++moves;
            EXPECT_EQ(test::ReadBytes(to), OldBytes());
            ProfileSet list;
            EXPECT_EQ(LoadProfileFile(from, list), 1U);
            EXPECT_EQ(list, OneProfile(L"new"));
            EXPECT_NE(flags & MOVEFILE_REPLACE_EXISTING, 0U);
            EXPECT_NE(flags & MOVEFILE_WRITE_THROUGH, 0U);
            return genuine(from, to, flags);
        });
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(moves, 1);
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
}

constexpr DWORD kRetryMilliseconds = 20;

// Another program that holds the profile file; each wait is counted, and lets the file go when its turn has come.
class HeldProfileFile : public ProfileFileFailure {
protected:
    void Hold(DWORD sharing, int waitToLetGo = 0) {
        held.emplace(Path(), sharing);
        letGo = waitToLetGo;
        waits = 0;
    }

    int Waits() const { return waits; }
    void LetGo() { held.reset(); }

private:
    void Wait(DWORD milliseconds) {
        // The run-time library waits as well, in its own ways.
        if (milliseconds != kRetryMilliseconds) return genuineSleep(milliseconds);
        if (++waits == letGo) held->Release();
    }

    std::optional<test::HeldFile> held;
    int letGo = 0;
    int waits = 0;
    void(WINAPI* genuineSleep)(DWORD) = test::Genuine<void WINAPI(DWORD)>(L"kernel32", "Sleep");
    ReplacedImport<"Sleep", void(DWORD)> sleep{ThisProgram(), [this](DWORD milliseconds) { Wait(milliseconds); }};
};

TEST_F(HeldProfileFile, IsSavedOnceItIsLetGo) {
    Hold(FILE_SHARE_READ | FILE_SHARE_WRITE, 3);
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(Waits(), 3);
    ProfileSet list;
    LoadProfileFile(Path(), list);
    EXPECT_EQ(list, OneProfile(L"new"));
}

TEST_F(HeldProfileFile, IsNotSavedWhenItStaysHeld) {
    Hold(FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(Waits(), 9);
    LetGo();
    ExpectOldFileAndNoOther();
}

TEST_F(HeldProfileFile, IsLoadedOnceItIsLetGo) {
    Hold(0, 9);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_EQ(Waits(), 9);
}

TEST_F(HeldProfileFile, IsNotLoadedWhenItStaysHeld) {
    Hold(0);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 0U);
    EXPECT_EQ(Waits(), 9);
}

TEST_F(HeldProfileFile, IsLoadedAtOnceWhenOthersMayRead) {
    Hold(FILE_SHARE_READ);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_EQ(Waits(), 0);
}

TEST_F(HeldProfileFile, IsNotSetAside) {
    Hold(0);
    EXPECT_FALSE(SetAsideProfileFile(Path()));
    LetGo();
    ExpectOldFileAndNoOther();
}

TEST_F(HeldProfileFile, AMissingFileIsNotWaitedFor) {
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Folder() + L"\\missing.xml", list), 0U);
    EXPECT_EQ(Waits(), 0);
}

TEST_F(ProfileFileFailure, ABrokenFileThatCannotBeMovedStaysWhereItIs) {
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

// A disk that fails to open, write or finish a file, at every point of a save.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

#include "model/profile_document.h"
#include "model/xml_guard.h"
#include "tests/model_windows/code_pages.h"
#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/intercepted_rename.h"
#include "tests/model_windows/profile_file_failure_fixture.h"
#include "tests/support/replaced_import.h"

namespace kvn::model {
namespace {

using kvn::test::ReplacedImport;
using WriteFunction = BOOL(HANDLE, const void*, DWORD, DWORD*, OVERLAPPED*);

// Everything that the C library writes to disk goes through its import of WriteFile.
class InterceptedWrites {
public:
    explicit InterceptedWrites(std::function<WriteFunction> standIn)
        : intercepted(GetModuleHandleW(L"msvcrt"), std::move(standIn)) {
        if (!intercepted.IsInPlace()) throw std::runtime_error("the C library does not write through WriteFile");
    }

private:
    ReplacedImport<"WriteFile", WriteFunction> intercepted;
};

BOOL ReallyWrite(HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* overlapped) {
    static const auto kGenuine = test::Genuine<WriteFunction>(L"kernel32", "WriteFile");
    return kGenuine(file, bytes, count, written, overlapped);
}

// The behaviour of a disk without enough room.
enum class FullDisk { WritesNothing, WritesWhatFits, WritesWhatFitsAndSucceeds };
constexpr std::array kKindsOfFullDisk{FullDisk::WritesNothing, FullDisk::WritesWhatFits,
                                      FullDisk::WritesWhatFitsAndSucceeds};

// Saves onto a disk that has room for this many bytes.
bool SaveOnto(FullDisk kind, std::size_t room, const std::wstring& path, const ProfileSet& list) {
    const InterceptedWrites writes(
        [&room, kind](HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* overlapped) {
            if (count <= room) {
                room -= count;
                return ReallyWrite(file, bytes, count, written, overlapped);
            }
            *written = 0;
            if (kind != FullDisk::WritesNothing)
                ReallyWrite(file, bytes, static_cast<DWORD>(room), written, overlapped);
            room = 0;
            SetLastError(ERROR_DISK_FULL);
            return BOOL{kind == FullDisk::WritesWhatFitsAndSucceeds};
        });
    return SaveProfileFile(path, list);
}

ProfileSet LongList() {
    ProfileSet list = OneProfile(L"long");
    list[0].settings.applications.assign(1000, {L"name", L"C:\\path.exe"});
    return list;
}

class ProfileFileWriteFaultTest : public ProfileFileFailureTest {
protected:
    // The number of bytes that the list has on disk.
    std::size_t SizeOf(const ProfileSet& list) const {
        const std::wstring other = Folder() + L"\\other.xml";
        EXPECT_TRUE(SaveProfileFile(other, list));
        const std::size_t size = test::ReadBytes(other).size();
        DeleteFileW(other.c_str());
        return size;
    }

    void ExpectNoSaveOnto(FullDisk kind, std::size_t room, const ProfileSet& list) const {
        SCOPED_TRACE("room for " + std::to_string(room) + " bytes, kind " + std::to_string(static_cast<int>(kind)));
        ASSERT_FALSE(SaveOnto(kind, room, Path(), list));
        ASSERT_NO_FATAL_FAILURE(ExpectOldFileAndNoOther());
    }

    // A save in which one function fails.
    template <kvn::test::FunctionName kFunction, typename Function>
    void ExpectNoSaveWhen(std::function<Function> fails) const {
        SCOPED_TRACE(kFunction.text);
        const ReplacedImport<kFunction, Function> failing(ThisProgram(), std::move(fails));
        ASSERT_TRUE(failing.IsInPlace());
        EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
        ExpectOldFileAndNoOther();
    }
};

TEST_F(ProfileFileWriteFaultTest, ADiskThatIsFullAtAnyByteLeavesTheOldFile) {
    const ProfileSet list = OneProfile(test::TextOfUsersCodePage());
    const std::size_t size = SizeOf(list);
    ASSERT_GT(size, 500U);
    for (std::size_t room = 0; room < size; ++room) {
        for (const FullDisk kind : kKindsOfFullDisk) ExpectNoSaveOnto(kind, room, list);
        if (HasFailure()) return;
    }
    EXPECT_TRUE(SaveOnto(FullDisk::WritesNothing, size, Path(), list));
    ProfileSet loaded;
    LoadProfileFile(Path(), loaded);
    EXPECT_EQ(loaded, list);
}

TEST_F(ProfileFileWriteFaultTest, ADiskThatIsFullWithinALongFileLeavesTheOldFile) {
    const ProfileSet list = LongList();
    const std::size_t size = SizeOf(list);
    ASSERT_GT(size, std::size_t{64} * 1024);
    for (std::size_t room = size % 4096; room < size; room += 4096) {
        ExpectNoSaveOnto(FullDisk::WritesNothing, room, list);
        ExpectNoSaveOnto(FullDisk::WritesWhatFitsAndSucceeds, room, list);
    }
    ExpectNoSaveOnto(FullDisk::WritesWhatFits, size - 1, list);
    EXPECT_TRUE(SaveOnto(FullDisk::WritesWhatFits, size, Path(), list));
}

// Like a network drive that drops out for a moment: everything before and after is written.
TEST_F(ProfileFileWriteFaultTest, AnyOneWriteThatFailsLeavesTheOldFile) {
    const ProfileSet list = LongList();
    int writes = 0;
    int failing = 0;
    const InterceptedWrites intercepted(
        [&](HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* overlapped) {
            if (++writes != failing) return ReallyWrite(file, bytes, count, written, overlapped);
            *written = 0;
            SetLastError(ERROR_NETNAME_DELETED);
            return FALSE;
        });
    const auto save = [&](int failingWrite) {
        failing = failingWrite;
        writes = 0;
        return SaveProfileFile(Path(), list);
    };
    ASSERT_TRUE(SaveProfileFile(Folder() + L"\\other.xml", list));
    const int writesOfASave = writes;
    ASSERT_TRUE(DeleteFileW((Folder() + L"\\other.xml").c_str()));
    ASSERT_GT(writesOfASave, 1);
    // Some C libraries write each line, others each full buffer.
    const int step = std::max(1, writesOfASave / 50);
    for (int write = 1; write <= writesOfASave; write += step) {
        ASSERT_FALSE(save(write)) << "write " << write;
        ASSERT_NO_FATAL_FAILURE(ExpectOldFileAndNoOther());
    }
    EXPECT_FALSE(save(writesOfASave));
    ExpectOldFileAndNoOther();
    EXPECT_TRUE(save(0));
}

TEST_F(ProfileFileWriteFaultTest, AFileThatCannotBeOpenedLeavesTheOldOne) {
    const ReplacedImport<"Sleep", void(DWORD)> sleep(ThisProgram(), [](DWORD) {});
    for (const DWORD error : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_SHARING_VIOLATION}, DWORD{ERROR_DISK_FULL},
                              DWORD{ERROR_TOO_MANY_OPEN_FILES}, DWORD{ERROR_BAD_NETPATH}}) {
        SCOPED_TRACE(error);
        // The test itself opens files to check them.
        const auto genuine = test::Genuine<decltype(CreateFileW)>(L"kernel32", "CreateFileW");
        ExpectNoSaveWhen<"CreateFileW", HANDLE(LPCWSTR, DWORD, DWORD, SECURITY_ATTRIBUTES*, DWORD, DWORD, HANDLE)>(
            [=](LPCWSTR path, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES* security, DWORD creation, DWORD flags,
                HANDLE pattern) {
                if (creation == OPEN_EXISTING)
                    return genuine(path, access, sharing, security, creation, flags, pattern);
                SetLastError(error);
                return INVALID_HANDLE_VALUE;
            });
    }
}

TEST_F(ProfileFileWriteFaultTest, AFileWithoutAStreamLeavesTheOldOne) {
    ExpectNoSaveWhen<"DuplicateHandle", BOOL(HANDLE, HANDLE, HANDLE, HANDLE*, DWORD, BOOL, DWORD)>(
        [](HANDLE, HANDLE, HANDLE, HANDLE*, DWORD, BOOL, DWORD) { return FALSE; });
    ExpectNoSaveWhen<"_open_osfhandle", int(std::intptr_t, int)>([](std::intptr_t, int) { return -1; });
    ExpectNoSaveWhen<"_wfdopen", FILE*(int, const wchar_t*)>([](int, const wchar_t*) { return nullptr; });
}

TEST_F(ProfileFileWriteFaultTest, AFileThatCannotBeFlushedOrClosedLeavesTheOldOne) {
    ExpectNoSaveWhen<"fflush", int(FILE*)>([](FILE*) { return EOF; });
    ExpectNoSaveWhen<"_commit", int(int)>([](int) { return -1; });
    const auto genuine = test::Genuine<int(FILE*)>(L"msvcrt", "fclose");
    ExpectNoSaveWhen<"fclose", int(FILE*)>([genuine](FILE* stream) {
        genuine(stream);
        return EOF;
    });
}

TEST_F(ProfileFileWriteFaultTest, AFileThatCannotBeRenamedLeavesTheOldOne) {
    const ReplacedImport<"Sleep", void(DWORD)> sleep(ThisProgram(), [](DWORD) {});
    for (const DWORD error : {DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_SHARING_VIOLATION}, DWORD{ERROR_DISK_FULL},
                              DWORD{ERROR_BAD_NETPATH}}) {
        const test::InterceptedRename rename([error](HANDLE, const std::wstring&) {
            SetLastError(error);
            return FALSE;
        });
        ASSERT_TRUE(rename.IsInPlace());
        EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new"))) << error;
        ExpectOldFileAndNoOther();
    }
}

TEST_F(ProfileFileWriteFaultTest, AStreamWithoutItsOwnBufferSavesAllTheSame) {
    const ReplacedImport<"setvbuf", int(FILE*, char*, int, std::size_t)> unbuffered(
        ThisProgram(), [](FILE*, char*, int, std::size_t) { return -1; });
    ASSERT_TRUE(unbuffered.IsInPlace());
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    ProfileSet loaded;
    LoadProfileFile(Path(), loaded);
    EXPECT_EQ(loaded, OneProfile(L"new"));
}

TEST_F(ProfileFileWriteFaultTest, AListOfMoreBytesThanAreReadBackIsNotSaved) {
    ProfileSet list = OneProfile(L"new");
    list[0].settings.gestures.assign(5'000, {L"U", 37, std::wstring(kMaxTextLength, L'\x939'), {}});
    ASSERT_FALSE(SaveProfileFile(Path(), list));
    ExpectOldFileAndNoOther();
}

TEST_F(ProfileFileWriteFaultTest, AListOfMoreElementsThanAreReadBackIsNotSaved) {
    constexpr std::size_t kElementsOfAProgram = 3;
    ProfileSet list = OneProfile(L"new");
    list[0].settings.applications.assign(kMaxXmlElements / kElementsOfAProgram, {L"", L""});
    ASSERT_FALSE(SaveProfileFile(Path(), list));
    ExpectOldFileAndNoOther();

    // Each text outside the code page adds one more.
    list[0].settings.applications.assign(kMaxXmlElements / (kElementsOfAProgram + 2), {L"\x939", L"\x939"});
    ASSERT_FALSE(SaveProfileFile(Path(), list));
    ExpectOldFileAndNoOther();

    list[0].settings.applications.resize(list[0].settings.applications.size() - 20);
    ASSERT_TRUE(SaveProfileFile(Path(), list));
    ProfileSet loaded;
    EXPECT_EQ(LoadProfileFile(Path(), loaded), 1U);
    EXPECT_TRUE(loaded == list);
}

}  // namespace
}  // namespace kvn::model

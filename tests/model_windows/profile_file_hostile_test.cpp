// Files and paths that nobody's profile file should be: none ends the program, takes its memory or its stack, or is
// lost.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "model/profile_file.h"
#include "model/xml_guard.h"
#include "tests/model/repeated_text.h"
#include "tests/model_windows/code_pages.h"
#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/heap_watch.h"
#include "tests/model_windows/settings_store_fixture.h"
#include "tests/model_windows/small_stack.h"
#include "tests/support/replaced_import.h"

namespace kvn::model {
namespace {

using kvn::test::ReplacedImport;
using ReadFunction = BOOL(HANDLE, void*, DWORD, DWORD*, OVERLAPPED*);

std::string RandomBytes(std::size_t count) {
    std::mt19937 random(7);
    std::string bytes(count, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    return bytes;
}

class HostileFileTest : public SettingsStore {
protected:
    // Opens the file as the page does, with little stack, and expects it to be set aside as it is.
    void ExpectSetAside(const std::string& bytes, std::size_t mostHeapBytes) {
        SCOPED_TRACE(std::to_string(bytes.size()) + " bytes: " + bytes.substr(0, 40));
        WriteFile(bytes);
        bool opened = false;
        const test::HeapWatch heap;
        ASSERT_TRUE(heap.IsInPlace());
        test::RunWithStackOf(test::kSmallStack, [&] { opened = LoadMouseSettings(settings); });
        EXPECT_LE(heap.PeakBytes(), static_cast<std::ptrdiff_t>(mostHeapBytes));
        EXPECT_TRUE(opened);
        EXPECT_EQ(settings.profiles.size(), 1U);
        const std::wstring aside = User().SettingsFolder() + L"\\VID0abcPID00a1.broken-1.xml";
        ASSERT_EQ(FilesInFolder(), (std::vector<std::wstring>{L"VID0abcPID00a1.broken-1.xml", kFileName}));
        EXPECT_TRUE(test::ReadBytes(aside) == bytes);
        ProfileSet list;
        EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
        DeleteFileW(aside.c_str());
    }

    // The bytes of a good file.
    std::string SavedBytes(const ProfileSet& list) {
        EXPECT_TRUE(LoadMouseSettings(settings));
        EXPECT_TRUE(SaveProfileFile(Path(), list));
        return test::ReadBytes(Path());
    }
};

TEST_F(HostileFileTest, IsSetAsideUnchangedWithinLittleMemoryAndStack) {
    ExpectSetAside("", test::kMegabyte);
    ExpectSetAside("profiles", test::kMegabyte);
    ExpectSetAside(std::string(test::kMegabyte, '\0'), 4 * test::kMegabyte);
    ExpectSetAside(std::string(20, '\0') + "<data><profile/></data>", test::kMegabyte);
    ExpectSetAside("<data><profile/></data>" + std::string(1, '\0'), test::kMegabyte);
    ExpectSetAside(RandomBytes(test::kMegabyte), 4 * test::kMegabyte);
    ExpectSetAside(test::Repeated("<a>", 100'000), 2 * test::kMegabyte);
    ExpectSetAside("<data>" + test::Repeated("<profile>", 100'000), 4 * test::kMegabyte);
    ExpectSetAside("<data " + test::Repeated("a='b' ", 100'000) + "/>", 4 * test::kMegabyte);
    ExpectSetAside("<!--" + test::Repeated("<a>", 100'000), 2 * test::kMegabyte);
    ExpectSetAside(test::Repeated("<![CDATA[", 100'000), 4 * test::kMegabyte);
}

TEST_F(HostileFileTest, OfFiftyMegabytesIsNotEvenRead) {
    const std::string bytes = "<data><profile/>" + std::string(50 * test::kMegabyte, ' ') + "</data>";
    ExpectSetAside(bytes, test::kMegabyte);

    WriteFile(bytes);
    int reads = 0;
    const ReplacedImport<"ReadFile", ReadFunction> read(GetModuleHandleW(nullptr),
                                                        [&reads](HANDLE, void*, DWORD, DWORD*, OVERLAPPED*) {
                                                            ++reads;
                                                            return FALSE;
                                                        });
    ASSERT_TRUE(read.IsInPlace());
    ProfileSet list(1, DefaultProfileRecord());
    EXPECT_EQ(LoadProfileFile(Path(), list), 0U);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(reads, 0);
}

TEST_F(HostileFileTest, CutShortIsSetAside) {
    const std::wstring text = test::TextOfUsersCodePage();
    ProfileSet list(3, DefaultProfileRecord());
    list[0].name = test::AlphabetOf(test::UserCodePage()).substr(0, 100);
    list[1].settings.applications = {{text, L"C:\\" + text}};
    list[2].settings.gestures = {{L"UD", 37, L"memo", {{17, 90, kNoKey}}}};
    const std::string bytes = SavedBytes(list);
    const std::size_t rootEnd = bytes.rfind("</data>");
    ASSERT_NE(rootEnd, std::string::npos);
    for (std::size_t part = 0; part <= 24; ++part)
        ExpectSetAside(bytes.substr(0, rootEnd * part / 24), test::kMegabyte);
}

// A list of a length that no page makes, but which a file may have, needs no more stack than a short one.
TEST_F(HostileFileTest, ThatIsLongButGoodIsLoadedWithLittleStack) {
    WriteFile("<data>" + test::Repeated("<profile><profname>a</profname></profile>", 50'000) + "</data>");
    std::size_t loaded = 0;
    ProfileSet list;
    test::RunWithStackOf(test::kSmallStack, [&] { loaded = LoadProfileFile(Path(), list); });
    EXPECT_EQ(loaded, 50'000U);
}

TEST_F(HostileFileTest, AsDeepAsIsAllowedIsLoadedWithLittleStack) {
    const std::size_t inner = kMaxXmlDepth - 1;
    WriteFile("<data><profile/>" + test::Repeated("<a>", inner) + test::Repeated("</a>", inner) + "</data>");
    std::size_t loaded = 0;
    ProfileSet list;
    test::RunWithStackOf(test::kSmallStack, [&] { loaded = LoadProfileFile(Path(), list); });
    EXPECT_EQ(loaded, 1U);
}

// Loads the file while something is done to it between opening and reading.
std::size_t LoadWhile(const std::wstring& path, ProfileSet& list, const std::function<void()>& change) {
    const auto genuine = test::Genuine<ReadFunction>(L"kernel32", "ReadFile");
    int reads = 0;
    const ReplacedImport<"ReadFile", ReadFunction> read(
        GetModuleHandleW(nullptr), [&](HANDLE file, void* bytes, DWORD count, DWORD* done, OVERLAPPED* overlapped) {
            if (++reads == 1) change();
            return genuine(file, bytes, count, done, overlapped);
        });
    const std::size_t loaded = LoadProfileFile(path, list);
    EXPECT_EQ(reads, 1);
    return loaded;
}

// Writes into a file that others may have open.
void Overwrite(const std::wstring& path, const std::string& bytes) {
    const platform::UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    SetEndOfFile(file.Get());
}

TEST_F(HostileFileTest, ThatChangesWhileItIsReadIsReadAsFarAsItIsWhole) {
    const std::string good = "<data><profile><profname>a</profname></profile></data>";
    ProfileSet list;
    WriteFile(good);
    EXPECT_EQ(LoadWhile(Path(), list, [&] { Overwrite(Path(), ""); }), 0U);
    WriteFile(good);
    EXPECT_EQ(LoadWhile(Path(), list, [&] { Overwrite(Path(), good.substr(0, 30)); }), 0U);
    WriteFile(good);
    EXPECT_EQ(LoadWhile(Path(), list, [&] { Overwrite(Path(), "<data><profile/></data>"); }), 1U);
    WriteFile(good);
    EXPECT_EQ(LoadWhile(Path(), list, [&] { Overwrite(Path(), good + std::string(50 * test::kMegabyte, ' ')); }), 1U);
    WriteFile(good);
    EXPECT_EQ(LoadWhile(Path(), list, [&] { Overwrite(Path(), std::string(good.size(), '\0')); }), 0U);
    EXPECT_TRUE(list.empty());
}

TEST_F(HostileFileTest, ThatIsReplacedWhileItIsReadIsTheOldOne) {
    WriteFile("<data><profile><profname>old</profname></profile></data>");
    const std::wstring next = User().SettingsFolder() + L"\\next.xml";
    const std::wstring previous = User().SettingsFolder() + L"\\previous.xml";
    test::WriteBytes(next, "<data><profile><profname>another</profname></profile></data>");
    ProfileSet list;
    // Others may rename a file that is being read, so this succeeds everywhere.
    const auto replace = [&] {
        EXPECT_TRUE(MoveFileW(Path().c_str(), previous.c_str()));
        EXPECT_TRUE(MoveFileW(next.c_str(), Path().c_str()));
    };
    ASSERT_EQ(LoadWhile(Path(), list, replace), 1U);
    EXPECT_EQ(list[0].name, L"old");
    ASSERT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_EQ(list[0].name, L"another");
}

TEST_F(HostileFileTest, AFolderInTheFilesPlaceIsSetAsideWithWhatIsInIt) {
    WriteFile("");
    ASSERT_TRUE(DeleteFileW(Path().c_str()));
    ASSERT_TRUE(CreateDirectoryW(Path().c_str(), nullptr));
    test::WriteBytes(Path() + L"\\inside", "kept");
    EXPECT_TRUE(LoadMouseSettings(settings));
    EXPECT_EQ(test::ReadBytes(User().SettingsFolder() + L"\\VID0abcPID00a1.broken-1.xml\\inside"), "kept");
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
}

TEST_F(HostileFileTest, ADeviceIsNoFile) {
    const std::wstring folder = User().ApplicationData();
    for (const std::wstring& path :
         {std::wstring(L"NUL"), std::wstring(L"\\\\.\\NUL"), folder + L"\\NUL", folder + L"\\nul.xml",
          std::wstring(L"\\\\.\\pipe\\KvnNoSuchPipe"), std::wstring(L"\\\\.\\NoSuchDevice")}) {
        SCOPED_TRACE(std::string(path.begin(), path.end()));
        ProfileSet list(1, DefaultProfileRecord());
        EXPECT_EQ(LoadProfileFile(path, list), 0U);
        EXPECT_TRUE(list.empty());
        EXPECT_FALSE(SaveProfileFile(path, {DefaultProfileRecord()}));
        EXPECT_TRUE(test::NamesIn(folder).empty());
    }
}

TEST_F(HostileFileTest, APipeIsNoFileAndIsNotWaitedFor) {
    const std::wstring path = L"\\\\.\\pipe\\KvnHostileFile-" + std::to_wstring(GetCurrentProcessId());
    const platform::UniqueFile pipe(
        CreateNamedPipeW(path.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE | PIPE_WAIT, 2, 64, 64, 0, nullptr));
    ASSERT_TRUE(pipe);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(path, list), 0U);
}

// Windows has no longer paths for most programs, or it has: in either case nothing is lost.
TEST_F(HostileFileTest, APathAtTheLimitOfItsLengthLosesNothing) {
    for (const std::size_t length : {std::size_t{250}, std::size_t{259}, std::size_t{260}, std::size_t{280}}) {
        SCOPED_TRACE(length);
        std::wstring folder = User().ApplicationData();
        folder += L'\\' + std::wstring(length - folder.size() - 10, L'f');
        const std::wstring path = folder + L"\\file.xml";
        ASSERT_EQ(path.size(), length);
        ASSERT_TRUE(CreateDirectoryW((L"\\\\?\\" + folder).c_str(), nullptr));
        const std::string good = "<data><profile><profname>old</profname></profile></data>";
        test::WriteBytes(L"\\\\?\\" + path, good);

        ProfileSet list;
        EXPECT_LE(LoadProfileFile(path, list), 1U);
        EXPECT_FALSE(SetAsideProfileFile(path) && test::NamesIn(L"\\\\?\\" + folder).empty());
        ProfileSet replacement(1, DefaultProfileRecord());
        replacement[0].name = L"new";
        const bool saved = SaveProfileFile(path, replacement);
        EXPECT_EQ(test::NamesIn(L"\\\\?\\" + folder), std::vector<std::wstring>{L"file.xml"});
        EXPECT_EQ(test::ReadBytes(L"\\\\?\\" + path) == good, !saved);
        DeleteFileW((L"\\\\?\\" + path).c_str());
        RemoveDirectoryW((L"\\\\?\\" + folder).c_str());
    }
}

}  // namespace
}  // namespace kvn::model

// The shortcut files that are found below a folder, and trees that would never end.
#include "profiles/shortcut_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "platform/unique_resource.h"
#include "tests/profiles/start_menu.h"

namespace kvn::test {
namespace {

using Files = std::vector<std::wstring>;

bool MakeFile(const std::wstring& path) {
    return static_cast<bool>(platform::UniqueFile(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

class ShortcutFilesTest : public testing::Test {
protected:
    // The found files, relative to the folder.
    Files Found(const std::wstring& below = {}) const {
        Files found;
        profiles::AppendShortcutFiles(below.empty() ? folder.Path() : folder.PathOf(below), found);
        for (std::wstring& file : found) {
            EXPECT_EQ(file.find(folder.Path() + L"\\"), 0U);
            file.erase(0, folder.Path().size() + 1);
        }
        return found;
    }
    Files FoundInNoOrder() const {
        Files found = Found();
        std::sort(found.begin(), found.end());
        return found;
    }

    const ScratchFolder folder;
};

TEST_F(ShortcutFilesTest, AreThoseWithTheExtensionOfShortcuts) {
    folder.AddFile(L"a.lnk");
    folder.AddFile(L"b.LNK");
    folder.AddFile(L"c.txt");
    folder.AddFile(L"d.lnk.txt");
    folder.AddFile(L"desktop.ini");
    folder.AddFolder(L"e.lnk");
    EXPECT_EQ(FoundInNoOrder(), (Files{L"a.lnk", L"b.LNK"}));
}

TEST_F(ShortcutFilesTest, AreFoundInSubFoldersOfAnyDepth) {
    folder.AddFile(L"one\\two\\three.lnk");
    folder.AddFile(L"one\\two\\three\\four\\five\\six.lnk");
    folder.AddFile(L"folder.lnk\\seven.lnk");
    EXPECT_EQ(FoundInNoOrder(),
              (Files{L"folder.lnk\\seven.lnk", L"one\\two\\three.lnk", L"one\\two\\three\\four\\five\\six.lnk"}));
}

TEST_F(ShortcutFilesTest, OfSubFoldersComeBeforeThoseOfTheFolder) {
    folder.AddFile(L"a.lnk");
    folder.AddFile(L"z\\b.lnk");
    folder.AddFile(L"z\\a\\c.lnk");
    EXPECT_EQ(Found(), (Files{L"z\\a\\c.lnk", L"z\\b.lnk", L"a.lnk"}));
}

TEST_F(ShortcutFilesTest, AreAppended) {
    const std::wstring file = folder.AddFile(L"a.lnk");
    Files found{L"before"};
    profiles::AppendShortcutFiles(folder.Path(), found);
    EXPECT_EQ(found, (Files{L"before", file}));
}

TEST_F(ShortcutFilesTest, OfAFolderThatIsNotThereAreNone) {
    EXPECT_TRUE(Found(L"missing").empty());
    folder.AddFile(L"file.lnk");
    EXPECT_TRUE(Found(L"file.lnk").empty());
}

TEST_F(ShortcutFilesTest, BehindAFolderLinkAreFoundByThePathOfTheLink) {
    folder.AddFile(L"real\\a.lnk");
    folder.AddFolderLink(L"link", L"real");
    EXPECT_EQ(FoundInNoOrder(), (Files{L"link\\a.lnk", L"real\\a.lnk"}));
}

TEST_F(ShortcutFilesTest, AreFoundOnceWhereALinkLeadsInCircles) {
    folder.AddFile(L"a\\b\\c.lnk");
    folder.AddFolderLink(L"a\\b\\itself", L".");
    folder.AddFolderLink(L"a\\b\\parent", L"..");
    folder.AddFolderLink(L"a\\b\\top", L"../..");
    EXPECT_EQ(Found(), (Files{L"a\\b\\c.lnk"}));
}

TEST_F(ShortcutFilesTest, AreFoundOnceWhereALinkLeadsAboveTheFolder) {
    folder.AddFile(L"above\\menu\\a.lnk");
    folder.AddFolderLink(L"above\\menu\\up", L"../..");
    EXPECT_EQ(Found(L"above\\menu"), (Files{L"above\\menu\\a.lnk"}));
}

TEST_F(ShortcutFilesTest, AreFoundOnceEachWayWhereTwoLinksLeadToEachOther) {
    folder.AddFile(L"a\\a.lnk");
    folder.AddFile(L"b\\b.lnk");
    folder.AddFolderLink(L"a\\other", L"../b");
    folder.AddFolderLink(L"b\\other", L"../a");
    EXPECT_EQ(FoundInNoOrder(), (Files{L"a\\a.lnk", L"a\\other\\b.lnk", L"b\\b.lnk", L"b\\other\\a.lnk"}));
}

// Following every link would give more paths than can be counted.
TEST_F(ShortcutFilesTest, AreFoundSoonWhereEveryFolderLinksToEveryOther) {
    constexpr int kFolders = 9;
    for (int i = 0; i < kFolders; ++i) folder.AddFile(std::to_wstring(i) + L"\\a.lnk");
    for (int i = 0; i < kFolders; ++i) {
        const std::wstring name = std::to_wstring(i);
        for (int other = 0; other < kFolders; ++other) {
            folder.AddFolderLink(name + L"\\to" + std::to_wstring(other), L"../" + std::to_wstring(other));
        }
    }
    EXPECT_EQ(Found().size(), 2U * kFolders);
}

TEST_F(ShortcutFilesTest, BehindALinkToNowhereAreNone) {
    folder.AddFile(L"a.lnk");
    folder.AddFolder(L"gone");
    folder.AddFolderLink(L"link", L"gone");
    RemoveDirectoryW(folder.PathOf(L"gone").c_str());
    EXPECT_EQ(Found(), (Files{L"a.lnk"}));
}

// A tree as deep as paths allow, on a thread whose stack has no room for a path for each level.
TEST_F(ShortcutFilesTest, OfATreeDeeperThanAnyPathAreThoseWhosePathsFit) {
    constexpr std::size_t kMaxPath = 1039;
    constexpr std::size_t kStack = 512 * 1024;
    // At this many levels a shortcut's path has exactly the longest length, or one less.
    const std::size_t levels = (kMaxPath - folder.PathOf(L"x.lnk").size()) / 2;
    const std::wstring deepest = folder.AddDeepFolder(L"d", levels + 50);
    const std::wstring prefix = L"\\\\?\\";
    Files expected;
    for (const std::size_t level : {levels + 1, levels, levels - 1, std::size_t{0}}) {
        const std::wstring file = deepest.substr(0, folder.Path().size() + 2 * level) + L"\\x.lnk";
        ASSERT_TRUE(MakeFile(prefix + file));
        if (level <= levels) expected.push_back(file);
    }
    ASSERT_EQ(expected[0].size() + (kMaxPath - expected[0].size()) % 2, kMaxPath);

    Files found;
    std::function<void()> search = [&] { profiles::AppendShortcutFiles(folder.Path(), found); };
    const auto run = [](void* work) -> DWORD {
        (*static_cast<std::function<void()>*>(work))();
        return 0;
    };
    const platform::UniqueKernelObject thread(
        CreateThread(nullptr, kStack, run, &search, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
    ASSERT_TRUE(thread);
    WaitForSingleObject(thread.Get(), INFINITE);
    EXPECT_EQ(found, expected);
}

}  // namespace
}  // namespace kvn::test

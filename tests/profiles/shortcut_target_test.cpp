// The targets of single shortcut files, good and hostile ones.
#include "profiles/shortcut_target.h"

#include <gtest/gtest.h>

#include <windows.h>

#include "platform/com_pointer.h"
#include "tests/profiles/start_menu.h"

namespace kvn::test {
namespace {

using profiles::ShortcutTarget;

class ShortcutTargetTest : public testing::Test {
protected:
    // A shortcut whose bytes differ from those that the shell wrote.
    std::wstring AddSpoiled(const std::wstring& name, const std::string& bytes) const {
        return folder.AddFile(name + L".lnk", bytes);
    }
    std::string GoodBytes() const { return ReadBytes(folder.AddShortcut(L"good.lnk", L"C:\\windows\\notepad.exe")); }

    const ScratchFolder folder;
    const platform::ComApartment apartment;
};

TEST_F(ShortcutTargetTest, IsThePathThatTheShortcutStores) {
    EXPECT_EQ(ShortcutTarget(folder.AddShortcut(L"a.lnk", L"C:\\windows\\notepad.exe")), L"C:\\windows\\notepad.exe");
    EXPECT_EQ(ShortcutTarget(folder.AddShortcut(L"b.lnk", L"C:\\windows\\win.ini")), L"C:\\windows\\win.ini");
}

TEST_F(ShortcutTargetTest, NeedNotExist) {
    EXPECT_EQ(ShortcutTarget(folder.AddShortcut(L"a.lnk", L"C:\\no such\\Program.EXE")), L"C:\\no such\\Program.EXE");
}

TEST_F(ShortcutTargetTest, OfAFileWithANameInAnyScriptIsFound) {
    const std::wstring target = L"C:\\no such\\\u00E4.exe";
    EXPECT_EQ(ShortcutTarget(folder.AddShortcut(L"\u304B\u306A.lnk", target)), target);
}

TEST_F(ShortcutTargetTest, IsEmptyWithoutAFile) {
    EXPECT_EQ(ShortcutTarget(folder.PathOf(L"missing.lnk")), L"");
    EXPECT_EQ(ShortcutTarget(folder.AddFolder(L"folder.lnk")), L"");
    EXPECT_EQ(ShortcutTarget(L""), L"");
}

TEST_F(ShortcutTargetTest, IsEmptyForAFileThatIsNoShortcut) {
    EXPECT_EQ(ShortcutTarget(folder.AddFile(L"empty.lnk")), L"");
    EXPECT_EQ(ShortcutTarget(folder.AddFile(L"text.lnk", "[InternetShortcut]\nURL=http://example.com/a.exe\n")), L"");
    EXPECT_EQ(ShortcutTarget(folder.AddFile(L"ones.lnk", std::string(100'000, '\xFF'))), L"");
    EXPECT_EQ(ShortcutTarget(folder.AddFile(L"zeros.lnk", std::string(100'000, '\0'))), L"");
}

TEST_F(ShortcutTargetTest, OfAFileThatIsCutAnywhereIsSurvived) {
    const std::string good = GoodBytes();
    for (std::size_t length = 0; length < good.size(); ++length) {
        const std::wstring target = ShortcutTarget(AddSpoiled(L"cut", good.substr(0, length)));
        EXPECT_LE(target.size(), 259U) << length;
    }
}

TEST_F(ShortcutTargetTest, OfAFileWithAnyByteSpoiledIsSurvived) {
    const std::string good = GoodBytes();
    for (std::size_t place = 0; place < good.size(); ++place) {
        for (const int bit : {1, 4}) {
            std::string bytes = good;
            bytes[place] = static_cast<char>(bytes[place] ^ bit);
            const std::wstring target = ShortcutTarget(AddSpoiled(L"spoiled", bytes));
            EXPECT_LE(target.size(), 259U) << place;
        }
    }
}

TEST_F(ShortcutTargetTest, OfAShortcutToItselfIsItself) {
    const std::wstring file = folder.PathOf(L"self.lnk");
    EXPECT_EQ(ShortcutTarget(folder.AddShortcut(L"self.lnk", file)), file);
}

}  // namespace
}  // namespace kvn::test

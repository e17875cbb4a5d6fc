// The programs that the Start menu's shortcuts lead to, their names and their order.
#include "profiles/start_menu_programs.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <thread>

#include "platform/com_pointer.h"
#include "tests/profiles/installer_stand_in.h"
#include "tests/profiles/start_menu.h"

namespace kvn::test {
namespace {

using model::ApplicationEntry;
using Programs = std::vector<ApplicationEntry>;

class StartMenuProgramsTest : public testing::Test {
protected:
    static Programs Found() {
        Programs found;
        profiles::AppendStartMenuPrograms(nullptr, found);
        return found;
    }
    static std::vector<std::wstring> FoundNames() {
        std::vector<std::wstring> names;
        for (const ApplicationEntry& program : Found()) names.push_back(program.name);
        return names;
    }
    using Names = std::vector<std::wstring>;

    const StartMenu menu;
};

TEST_F(StartMenuProgramsTest, AreThoseOfAllUsersAndOfThisUser) {
    menu.common.AddShortcut(L"For all.lnk", kNotepad);
    menu.own.AddShortcut(L"For me.lnk", L"C:\\windows\\regedit.exe");
    EXPECT_EQ(Found(), (Programs{{L"For all", kNotepad}, {L"For me", L"C:\\windows\\regedit.exe"}}));
}

TEST_F(StartMenuProgramsTest, AreFoundInSubSubFolders) {
    menu.own.AddShortcut(L"Maker\\Tools\\Deep.lnk", kNotepad);
    EXPECT_EQ(Found(), (Programs{{L"Deep", kNotepad}}));
}

TEST_F(StartMenuProgramsTest, BearTheNameOfTheShortcutWithoutItsExtension) {
    menu.own.AddShortcut(L"A.b.exe.LNK", kNotepad);
    menu.own.AddShortcut(L"\u304B\u306A \U0001F600.lnk", kNotepad);
    EXPECT_EQ(FoundNames(), (Names{L"A.b.exe", L"\u304B\u306A \U0001F600"}));
}

TEST_F(StartMenuProgramsTest, AShortcutToAnExecutableInCapitalsIsNotOffered) {
    menu.own.AddShortcut(L"Capitals.lnk", L"C:\\windows\\NOTEPAD.EXE");
    menu.own.AddShortcut(L"Capital.lnk", L"C:\\windows\\notepad.Exe");
    EXPECT_EQ(FoundNames(), Names{});
}

TEST_F(StartMenuProgramsTest, AShortcutToADocumentOrALinkIsNotOffered) {
    menu.own.AddShortcut(L"Document.lnk", L"C:\\windows\\win.ini");
    menu.own.AddShortcut(L"Page.lnk", L"C:\\x\\page.htm");
    menu.own.AddShortcut(L"Folder.lnk", L"C:\\windows\\folder.exe\\none");
    menu.own.AddShortcut(L"Longer.lnk", L"C:\\windows\\a.exe2");
    menu.own.AddShortcut(L"Bare.lnk", L"C:\\windows\\exe");
    menu.own.AddFile(L"Web.url", "[InternetShortcut]\nURL=http://example.com/a.exe\n");
    EXPECT_EQ(FoundNames(), Names{});
}

TEST_F(StartMenuProgramsTest, NeedNotExist) {
    menu.own.AddShortcut(L"Gone.lnk", L"C:\\no such\\gone.exe");
    EXPECT_EQ(Found(), (Programs{{L"Gone", L"C:\\no such\\gone.exe"}}));
}

TEST_F(StartMenuProgramsTest, AreSortedByTheCodeValuesOfTheirNames) {
    for (const wchar_t* name :
         {L"b", L"B", L"a", L"\u00E4", L"Z", L"_", L"10", L"9", L"\u3042", L"a b", L"a-b", L"ab"}) {
        menu.own.AddShortcut(std::wstring(name) == L"B" || std::wstring(name) == L"Z"
                                 ? L"capitals\\" + std::wstring(name) + L".lnk"
                                 : std::wstring(name) + L".lnk",
                             kNotepad);
    }
    EXPECT_EQ(FoundNames(),
              (Names{L"10", L"9", L"B", L"Z", L"_", L"a", L"a b", L"a-b", L"ab", L"b", L"\u00E4", L"\u3042"}));
}

TEST_F(StartMenuProgramsTest, AreSortedTogetherWithWhatTheListHeld) {
    menu.own.AddShortcut(L"b.lnk", kNotepad);
    Programs programs{{L"c", L"c.exe"}, {L"a", L"a.exe"}};
    profiles::AppendStartMenuPrograms(nullptr, programs);
    EXPECT_EQ(programs, (Programs{{L"a", L"a.exe"}, {L"b", kNotepad}, {L"c", L"c.exe"}}));
}

TEST_F(StartMenuProgramsTest, AreListedForEachOfTheirShortcuts) {
    menu.common.AddShortcut(L"Notepad.lnk", kNotepad);
    menu.own.AddShortcut(L"Notepad.lnk", kNotepad);
    menu.own.AddShortcut(L"More\\Editor.lnk", kNotepad);
    EXPECT_EQ(Found(), (Programs{{L"Editor", kNotepad}, {L"Notepad", kNotepad}, {L"Notepad", kNotepad}}));
}

TEST_F(StartMenuProgramsTest, BadShortcutsAreLeftOutAndHideNoOther) {
    const std::string good = ReadBytes(menu.own.AddShortcut(L"1.lnk", kNotepad));
    menu.own.AddFile(L"2.lnk");
    menu.own.AddFile(L"3.lnk", good.substr(0, 40));
    menu.own.AddFile(L"4.lnk", std::string(5000, '\xFF'));
    menu.own.AddShortcut(L"5.lnk\\6.lnk", kNotepad);
    menu.own.AddShortcut(L"7.lnk", menu.own.PathOf(L"7.lnk"));
    menu.own.AddShortcut(L"8.lnk", kNotepad);
    EXPECT_EQ(FoundNames(), (Names{L"1", L"6", L"8"}));
}

TEST_F(StartMenuProgramsTest, AreGatheredWithoutOneOfTheFolders) {
    menu.own.AddShortcut(L"a.lnk", kNotepad);
    SetProgramFolders(menu.common.PathOf(L"missing"), menu.own.Path());
    EXPECT_EQ(FoundNames(), (Names{L"a"}));
    SetProgramFolders(menu.own.Path(), menu.common.PathOf(L"missing"));
    EXPECT_EQ(FoundNames(), (Names{L"a"}));
}

TEST_F(StartMenuProgramsTest, WhoseInstallerKnowsNothingKeepTheStoredTarget) {
    const std::wstring target = L"C:\\windows\\Installer\\{0D6F3B92-74AE-4C18-8E5B-2A91F7C3D064}\\icon.exe";
    menu.own.AddShortcut(L"a.lnk", target);
    EXPECT_EQ(Found(), (Programs{{L"a", target}}));
}

TEST_F(StartMenuProgramsTest, BehindAnAdvertisementAreThoseThatTheInstallerNames) {
    const InstallerStandIn installer;
    const std::wstring file = menu.own.AddShortcut(L"a.lnk", L"C:\\windows\\Installer\\{0D6F}\\icon.exe");
    EXPECT_EQ(Found(), (Programs{{L"a", L"C:\\real\\program.exe"}}));
    EXPECT_EQ(installer->asked.find(file + L"|"), 0U);
}

TEST_F(StartMenuProgramsTest, WithoutAnAdvertisementAreNoMatterForTheInstaller) {
    const InstallerStandIn installer;
    menu.own.AddShortcut(L"Plain.lnk", kNotepad);
    menu.own.AddShortcut(L"Mark in the name.lnk", L"C:\\windows\\{0D6F}.exe");
    menu.own.AddShortcut(L"Icon.lnk", L"C:\\windows\\Installer\\{0D6F}\\icon.ico");
    menu.own.AddShortcut(L"Capitals.lnk", L"C:\\windows\\Installer\\{0D6F}\\ICON.EXE");
    menu.own.AddShortcut(L"{0D6F}\\In a marked folder.lnk", kNotepad);
    EXPECT_EQ(Found(), (Programs{{L"In a marked folder", kNotepad},
                                 {L"Mark in the name", L"C:\\windows\\{0D6F}.exe"},
                                 {L"Plain", kNotepad}}));
    EXPECT_EQ(installer->asked, L"");
}

TEST_F(StartMenuProgramsTest, LeaveTheThreadsApartmentAsItWas) {
    menu.own.AddShortcut(L"a.lnk", kNotepad);
    HRESULT afterwards = E_FAIL;
    std::thread([&] {
        Found();
        afterwards = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        CoUninitialize();
    }).join();
    EXPECT_EQ(afterwards, S_OK);
}

TEST_F(StartMenuProgramsTest, AreFoundInAThreadThatHasAnApartment) {
    menu.own.AddShortcut(L"a.lnk", kNotepad);
    const platform::ComApartment apartment;
    EXPECT_EQ(FoundNames(), (Names{L"a"}));
}

// Shortcuts are read in a single-threaded apartment, which such a thread cannot enter.
TEST_F(StartMenuProgramsTest, AreNoneInAThreadOfTheMultiThreadedApartment) {
    menu.own.AddShortcut(L"a.lnk", kNotepad);
    Names names{L"not asked"};
    std::thread([&] {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        names = FoundNames();
        CoUninitialize();
    }).join();
    EXPECT_EQ(names, Names{});
}

}  // namespace
}  // namespace kvn::test

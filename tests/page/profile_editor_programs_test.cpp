// The programs of a profile in the profile editor: how they are shown, and how they are deleted.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <set>

#include "tests/support/profile_editor_fixture.h"

namespace kvn::test {
namespace {

using Paths = std::vector<std::wstring>;
using Rows = std::vector<int>;

class ProgramsOfAProfileTest : public ProfileEditorTest {
protected:
    void OpenWithPrograms(int count) {
        std::vector<std::pair<std::string, std::string>> programs;
        for (int i = 0; i < count; ++i) {
            programs.emplace_back("n" + std::to_string(i), "C:\\p" + std::to_string(i) + ".exe");
        }
        OpenEditor({ProfileText("Default"), ProfileWithPrograms("a", programs), ProfileText("b")});
        editor->SelectProfiles({1});
    }
    HIMAGELIST Images() const {
        return reinterpret_cast<HIMAGELIST>(
            SendMessageW(editor->Control(IDC_PROFILES_PROGRAMS), LVM_GETIMAGELIST, LVSIL_SMALL, 0));
    }
};

TEST_F(ProgramsOfAProfileTest, AreShownWhenItAloneIsSelected) {
    OpenEditor({ProfileText("Default"), ProfileWithPrograms("a", {{"Zoo", "C:\\z.exe"}, {"Ape", kMissingProgram}}),
                ProfileWithPrograms("b", {{"Bee", "C:\\b.exe"}})});
    editor->SelectProfiles({1});
    EXPECT_EQ(editor->Programs(),
              (std::vector<ProgramRow>{{L"Zoo", L"C:\\z.exe"}, {L"Ape", L"C:\\nowhere\\missing.exe"}}));
    EXPECT_TRUE(editor->SelectedRows(IDC_PROFILES_PROGRAMS).empty());
    editor->SelectProfiles({1, 2});
    EXPECT_TRUE(editor->Programs().empty());
    editor->SelectProfiles({2});
    EXPECT_EQ(ProgramPaths(), (Paths{L"C:\\b.exe"}));
    editor->SelectProfiles({0});
    EXPECT_TRUE(editor->Programs().empty());
    editor->SelectProfiles({2});
    editor->SelectProfiles({});
    EXPECT_TRUE(editor->Programs().empty());
}

TEST_F(ProgramsOfAProfileTest, AreThoseOfTheNewestSelectionWhenTheShellPumpsMessages) {
    OpenEditor({ProfileText("Default"), ProfileWithPrograms("a", {{"1", "C:\\a1.exe"}, {"2", "C:\\a2.exe"}}),
                ProfileWithPrograms("b", {{"1", "C:\\b1.exe"}, {"2", "C:\\b2.exe"}})});
    bool isNested = false;
    const ReplacedImport<"SHGetFileInfoW", decltype(SHGetFileInfoW)> lookup(
        module.Handle(), [&](const wchar_t* path, DWORD, SHFILEINFOW*, UINT, UINT) -> DWORD_PTR {
            if (path == std::wstring(L"C:\\a1.exe") && !std::exchange(isNested, true)) editor->SelectProfiles({2});
            return 0;
        });
    editor->SelectProfiles({1});
    EXPECT_TRUE(isNested);
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (Rows{2}));
    EXPECT_EQ(ProgramPaths(), (Paths{L"C:\\b1.exe", L"C:\\b2.exe"}));
}

TEST_F(ProgramsOfAProfileTest, HaveTheIconsOfTheirFiles) {
    OpenEditor({ProfileText("Default"), ProfileWithPrograms("a", {{"Editor", kRealProgram},
                                                                  {"Missing", kMissingProgram},
                                                                  {"No path", ""},
                                                                  {"Shell", "C:\\windows\\explorer.exe"}})});
    editor->SelectProfiles({1});
    const auto images = [&] {
        Rows found;
        for (const ProgramRow& row : editor->Programs()) found.push_back(row.image);
        return found;
    };
    EXPECT_EQ(images(), (Rows{0, -1, -1, 1}));
    editor->SelectProfiles({0});
    editor->SelectProfiles({1});
    EXPECT_EQ(images(), (Rows{2, -1, -1, 3})) << "icons are only appended";
    EXPECT_EQ(ImageList_GetImageCount(Images()), 4);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(Images(), &width, &height);
    EXPECT_EQ(width, 16);
    EXPECT_EQ(height, 16);
}

TEST_F(ProgramsOfAProfileTest, TransparentPartsOfIconsShowTheListsBackground) {
    OpenWithPrograms(1);
    const HWND list = editor->Control(IDC_PROFILES_PROGRAMS);
    EXPECT_EQ(ImageList_GetBkColor(Images()), static_cast<COLORREF>(SendMessageW(list, LVM_GETBKCOLOR, 0, 0)));
}

TEST_F(ProgramsOfAProfileTest, IconsAndTheirListAreDestroyedOnce) {
    std::multiset<HICON> icons;
    std::multiset<HIMAGELIST> lists;
    bool everyIconWasOurs = true;
    WriteProfiles({ProfileWithPrograms("Default", {{"x", kRealProgram}, {"y", kRealProgram}})});
    Open();
    const ReplacedImport<"SHGetFileInfoW", decltype(SHGetFileInfoW)> lookup(
        module.Handle(), [&](const wchar_t* path, DWORD, SHFILEINFOW* info, UINT size, UINT flags) {
            EXPECT_EQ(flags, static_cast<UINT>(SHGFI_ICON | SHGFI_SMALLICON));
            const DWORD_PTR answer = SHGetFileInfoW(path, 0, info, size, flags);
            icons.insert(info->hIcon);
            return answer;
        });
    const ReplacedImport<"DestroyIcon", decltype(DestroyIcon)> destroyIcon(module.Handle(), [&](HICON icon) -> BOOL {
        everyIconWasOurs = everyIconWasOurs && icons.erase(icon) == 1;
        return DestroyIcon(icon);
    });
    const ReplacedImport<"ImageList_Create", decltype(ImageList_Create)> create(
        module.Handle(), [&](int width, int height, UINT flags, int initial, int growth) {
            EXPECT_EQ((std::vector<UINT>{static_cast<UINT>(width), static_cast<UINT>(height), flags,
                                         static_cast<UINT>(initial), static_cast<UINT>(growth)}),
                      (std::vector<UINT>{16, 16, ILC_COLORDDB, 5, 0}));
            const HIMAGELIST list = ImageList_Create(width, height, flags, initial, growth);
            lists.insert(list);
            return list;
        });
    int listsGivenBack = 0;
    const ReplacedImport<"ImageList_Destroy", decltype(ImageList_Destroy)> destroy(
        module.Handle(), [&](HIMAGELIST list) -> BOOL {
            ++listsGivenBack;
            EXPECT_EQ(lists.erase(list), 1U);
            // Nothing else has destroyed it: it still reports its images.
            EXPECT_EQ(ImageList_GetImageCount(list), 2);
            return ImageList_Destroy(list);
        });
    ASSERT_TRUE(lookup.IsInPlace() && destroyIcon.IsInPlace() && create.IsInPlace() && destroy.IsInPlace());
    ReopenEditor();
    editor->SelectProfiles({0});
    EXPECT_EQ(editor->Programs().size(), 2U);
    EXPECT_EQ(lists.size(), 1U);
    CloseEditor(IDCANCEL);
    EXPECT_TRUE(everyIconWasOurs);
    EXPECT_TRUE(icons.empty());
    EXPECT_EQ(listsGivenBack, 1);
    EXPECT_TRUE(lists.empty());
}

TEST_F(ProgramsOfAProfileTest, AreListedWithoutIconsWhenThereIsNoImageList) {
    WriteProfiles({ProfileWithPrograms("Default", {{"x", kRealProgram}})});
    Open();
    const ReplacedImport<"ImageList_Create", decltype(ImageList_Create)> create(
        module.Handle(), [](int, int, UINT, int, int) -> HIMAGELIST { return nullptr; });
    ASSERT_TRUE(create.IsInPlace());
    ReopenEditor();
    editor->SelectProfiles({0});
    EXPECT_EQ(editor->Programs(), (std::vector<ProgramRow>{{L"x", L"C:\\windows\\notepad.exe"}}));
    CloseEditor(IDOK);
}

TEST_F(ProgramsOfAProfileTest, SelectedOnesAreDeleted) {
    OpenWithPrograms(5);
    editor->SelectPrograms({0, 2, 3});
    CommandAndAnswer(IDC_PROFILES_DELETE_PROGRAM, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(ProgramPaths(), (Paths{L"C:\\p1.exe", L"C:\\p4.exe"}));
    EXPECT_FALSE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
    EXPECT_EQ(editor->SelectedRows(IDC_PROFILES_LIST), (Rows{1}));
    CloseEditor(IDOK);
    EXPECT_EQ(SavedPaths(1), (std::vector<std::string>{"C:\\p1.exe", "C:\\p4.exe"}));
}

TEST_F(ProgramsOfAProfileTest, DeleteIsDisabledAlsoWhereTheListDoesNotReportADeletion) {
    OpenWithPrograms(2);
    editor->SelectPrograms({0});
    ASSERT_TRUE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
    // As on Windows, where a deleted row does not lose its selection first.
    const SUBCLASSPROC silent = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
        const auto* header = reinterpret_cast<const NMHDR*>(lParam);
        if (message == WM_NOTIFY && header->code == LVN_ITEMCHANGED) return LRESULT{0};
        return DefSubclassProc(window, message, wParam, lParam);
    };
    sheet->Run([&] { SetWindowSubclass(editor->Window(), silent, 1, 0); });
    CommandAndAnswer(IDC_PROFILES_DELETE_PROGRAM, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(ProgramPaths(), (Paths{L"C:\\p1.exe"}));
    EXPECT_FALSE(editor->IsEnabled(IDC_PROFILES_DELETE_PROGRAM));
}

TEST_F(ProgramsOfAProfileTest, AllOfAHundredAreDeletedAtOnce) {
    OpenWithPrograms(100);
    Rows rows(100);
    for (int i = 0; i < 100; ++i) rows[static_cast<std::size_t>(i)] = i;
    editor->SelectPrograms(rows);
    CommandAndAnswer(IDC_PROFILES_DELETE_PROGRAM, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_TRUE(editor->Programs().empty());
    CloseEditor(IDOK);
    EXPECT_TRUE(SavedPaths(1).empty());
    EXPECT_EQ(SavedElement("profname", 1), "a");
}

TEST_F(ProgramsOfAProfileTest, AnyAnswerButYesKeepsThem) {
    OpenWithPrograms(2);
    editor->SelectPrograms({1});
    CommandAndAnswer(IDC_PROFILES_DELETE_PROGRAM, IDNO);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(ProgramPaths(), (Paths{L"C:\\p0.exe", L"C:\\p1.exe"}));
    const std::string before = Saved();
    CloseEditor(IDOK);
    EXPECT_EQ(Saved(), before);
}

TEST_F(ProgramsOfAProfileTest, DeletingWithoutASelectedOneIsRefused) {
    OpenWithPrograms(2);
    ExpectRefusal(IDC_PROFILES_DELETE_PROGRAM, kNoProgram);
    EXPECT_EQ(editor->Programs().size(), 2U);
    editor->SelectProfiles({0});
    ExpectRefusal(IDC_PROFILES_DELETE_PROGRAM, kNoProgram);
}

TEST_F(ProgramsOfAProfileTest, DeletedOnesOfOneProfileStayDeletedWhileAnotherIsSelected) {
    OpenWithPrograms(2);
    editor->SelectPrograms({0});
    CommandAndAnswer(IDC_PROFILES_DELETE_PROGRAM, IDYES);
    editor->SelectProfiles({2});
    editor->SelectProfiles({1});
    EXPECT_EQ(ProgramPaths(), (Paths{L"C:\\p1.exe"}));
}

TEST_F(ProgramsOfAProfileTest, FocusGoesFromTheDisabledDeleteButtonToTheirList) {
    OpenWithPrograms(2);
    editor->SelectPrograms({0});
    sheet->Run([&] { SetFocus(editor->Control(IDC_PROFILES_DELETE_PROGRAM)); });
    CommandAndAnswer(IDC_PROFILES_DELETE_PROGRAM, IDYES);
    EXPECT_TRUE(IsQuiet());
    EXPECT_EQ(sheet->Focus(), editor->Control(IDC_PROFILES_PROGRAMS));
}

TEST_F(ProgramsOfAProfileTest, FullListTakesNoMore) {
    OpenWithPrograms(100);
    ExpectRefusal(IDC_PROFILES_ADD_PROGRAM, kLimitReached);
    EXPECT_EQ(editor->Programs().size(), 100U);
}

TEST_F(ProgramsOfAProfileTest, MoreThanTheLimitInAFileAreAllShown) {
    OpenWithPrograms(130);
    EXPECT_EQ(editor->Programs().size(), 130U);
    ExpectRefusal(IDC_PROFILES_ADD_PROGRAM, kLimitReached);
}

TEST_F(ProgramsOfAProfileTest, LimitIsCheckedAfterTheSelection) {
    OpenWithPrograms(100);
    editor->SelectProfiles({});
    ExpectRefusal(IDC_PROFILES_ADD_PROGRAM, kNoProfile);
    editor->SelectProfiles({0, 1});
    ExpectRefusal(IDC_PROFILES_ADD_PROGRAM, kManyProfiles);
}

}  // namespace
}  // namespace kvn::test

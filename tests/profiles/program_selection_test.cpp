// The dialog "Select allocation program": its list, what OK takes and when.
#include "profiles/program_selection.h"

#include "tests/profiles/selection_fixture.h"
#include "tests/support/real_input.h"
#include "tests/support/replaced_import.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr wchar_t kRegedit[] = L"C:\\windows\\regedit.exe";

class ProgramSelectionTest : public SelectionTest {
protected:
    void AddThree() const {
        menu.own.AddShortcut(L"Alpha.lnk", kNotepad);
        menu.common.AddShortcut(L"Beta.lnk", kRegedit);
        menu.own.AddShortcut(L"Gamma.lnk", L"C:\\no such\\gamma.exe");
    }
};

TEST_F(ProgramSelectionTest, ListsTheProgramsOfTheStartMenu) {
    AddThree();
    Open();
    EXPECT_EQ(TextOf(dialog), L"Select allocation program");
    ASSERT_EQ(RowCount(), 3);
    EXPECT_EQ(Cell(0, 0), L"Alpha");
    EXPECT_EQ(Cell(0, 1), kNotepad);
    EXPECT_EQ(Cell(1, 0), L"Beta");
    EXPECT_EQ(Cell(1, 1), kRegedit);
    EXPECT_EQ(Cell(2, 0), L"Gamma");
    EXPECT_EQ(Cell(2, 1), L"C:\\no such\\gamma.exe");
    EXPECT_FALSE(Close(IDCANCEL));
}

TEST_F(ProgramSelectionTest, HasTwoColumnsOfFixedWidths) {
    Open();
    EXPECT_EQ(ColumnsOf(List()),
              (std::vector<ListColumn>{{L"File name", 300, LVCFMT_LEFT}, {L"Location", 400, LVCFMT_LEFT}}));
}

TEST_F(ProgramSelectionTest, ShowsAnIconWhereTheProgramHasOne) {
    AddThree();
    Open();
    EXPECT_EQ(ImageOf(0), 0);
    EXPECT_EQ(ImageOf(1), 1);
    EXPECT_EQ(ImageOf(2), -1);
    const auto images = reinterpret_cast<HIMAGELIST>(SendMessageW(List(), LVM_GETIMAGELIST, LVSIL_SMALL, 0));
    EXPECT_EQ(ImageList_GetImageCount(images), 2);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(images, &width, &height);
    EXPECT_EQ(width, 16);
    EXPECT_EQ(height, 16);
}

TEST_F(ProgramSelectionTest, OkTakesTheSelectedProgramsFromTheTop) {
    AddThree();
    Open();
    Select(2);
    Select(0);
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(chosen, (Programs{{L"Alpha", kNotepad}, {L"Gamma", L"C:\\no such\\gamma.exe"}}));
}

TEST_F(ProgramSelectionTest, OkWithoutASelectionEndsAndAddsNothing) {
    AddThree();
    Open();
    EXPECT_TRUE(Close(IDOK));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(ProgramSelectionTest, OkWithAnEmptyMenuEndsAndAddsNothing) {
    Open();
    EXPECT_EQ(RowCount(), 0);
    EXPECT_TRUE(Close(IDOK));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(ProgramSelectionTest, CancelAddsNothing) {
    AddThree();
    Open();
    Select(0);
    EXPECT_FALSE(Close(IDCANCEL));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(ProgramSelectionTest, ClosingTheWindowCancels) {
    AddThree();
    Open();
    Select(0);
    PostMessageW(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_FALSE(AwaitEnd());
    EXPECT_TRUE(chosen.empty());
}

TEST_F(ProgramSelectionTest, OkDoesNothingAfterAClickOnEmptySpace) {
    AddThree();
    Open();
    Select(0);
    ClickEmptySpace();
    Select(0);
    Press(IDOK);
    EXPECT_TRUE(StaysOpen());
    EXPECT_TRUE(chosen.empty());
    ClickRow(1);
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(chosen, (Programs{{L"Alpha", kNotepad}}));
}

TEST_F(ProgramSelectionTest, LastClickCountsInLaterOpeningsToo) {
    AddThree();
    Open();
    ClickEmptySpace();
    EXPECT_FALSE(Close(IDCANCEL));
    Open();
    Select(1);
    Press(IDOK);
    EXPECT_TRUE(StaysOpen());
    EXPECT_FALSE(Close(IDCANCEL));
    Open();
    Select(1);
    ClickRow(2);
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(chosen, (Programs{{L"Beta", kRegedit}}));
    Open();
    EXPECT_TRUE(Close(IDOK)) << "the last click hit a row";
}

TEST_F(ProgramSelectionTest, LastClickIsForgottenWithTheModule) {
    AddThree();
    Open();
    ClickEmptySpace();
    EXPECT_FALSE(Close(IDCANCEL));
    module.reset();
    module.emplace();
    Open();
    EXPECT_TRUE(Close(IDOK));
}

// The column of paths belongs to its row, even though only the name is shown as selected.
TEST_F(ProgramSelectionTest, ClickOnAPathHitsItsRow) {
    AddThree();
    Open();
    ClickEmptySpace();
    ClickAt({310, 8});
    EXPECT_TRUE(Close(IDOK));
}

TEST_F(ProgramSelectionTest, TakesTheRowThatTheMouseClicks) {
    AddThree();
    Open();
    BringToFront(dialog);
    const RECT place = LabelOfRow(List(), 1);
    POINT point{place.left + 5, (place.top + place.bottom) / 2};
    ClientToScreen(List(), &point);
    SetCursorPos(point.x, point.y);
    INPUT input[2]{};
    input[0].type = input[1].type = INPUT_MOUSE;
    input[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    input[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(2, input, sizeof(INPUT));
    Await("the row to be selected", [&] { return SelectedRowsOf(List()).size() == 1; });
    AwaitInputTaken(dialog);
    EXPECT_TRUE(Close(IDOK));
    EXPECT_EQ(chosen, (Programs{{L"Beta", kRegedit}}));
}

TEST_F(ProgramSelectionTest, NothingHappensBehindTheProposal) {
    Open();
    const HWND proposal = OpenWindowDialog();
    for (const int button : {IDC_PROGRAMS_SELECT_WINDOW, int{IDOK}, int{IDCANCEL}}) {
        PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    }
    EXPECT_TRUE(StaysOpen());
    Press(proposal, IDCANCEL);
    Await("the end of the proposal", [=] { return !IsWindow(proposal); });
    EXPECT_TRUE(StaysOpen());
    EXPECT_FALSE(Close(IDCANCEL));
    EXPECT_TRUE(chosen.empty());
}

TEST_F(ProgramSelectionTest, ShortcutsMadeMeanwhileAppearAtTheNextOpening) {
    AddThree();
    Open();
    menu.own.AddShortcut(L"New\\Aaa.lnk", kNotepad);
    EXPECT_EQ(RowCount(), 3);
    EXPECT_FALSE(Close(IDCANCEL));
    Open();
    EXPECT_EQ(RowCount(), 4);
    EXPECT_EQ(Cell(0, 0), L"Aaa");
}

TEST_F(ProgramSelectionTest, TextsAreReadToTheirLimitAndNoPairIsSplit) {
    AddThree();
    Open();
    const std::wstring pair = L"\U0001F600";
    const std::wstring texts[][2] = {{std::wstring(258, L'n') + pair, std::wstring(257, L'p') + pair},
                                     {std::wstring(300, L'n'), std::wstring(259, L'p')}};
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column) {
            LVITEMW item{};
            item.mask = LVIF_TEXT;
            item.iItem = row;
            item.iSubItem = column;
            item.pszText = const_cast<wchar_t*>(texts[row][column].c_str());
            SendMessageW(List(), LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
        Select(row);
    }
    EXPECT_TRUE(Close(IDOK));
    ASSERT_EQ(chosen.size(), 2U);
    EXPECT_EQ(chosen[0].name, std::wstring(258, L'n'));
    EXPECT_EQ(chosen[0].path, std::wstring(257, L'p') + pair);
    EXPECT_EQ(chosen[1].name, std::wstring(259, L'n'));
    EXPECT_EQ(chosen[1].path, std::wstring(259, L'p'));
}

TEST_F(ProgramSelectionTest, OtherNotificationsAreNoClicks) {
    AddThree();
    Open();
    ClickEmptySpace();
    for (const UINT code :
         {static_cast<UINT>(NM_RCLICK), static_cast<UINT>(NM_DBLCLK), static_cast<UINT>(NM_SETFOCUS)}) {
        NMHDR notification{List(), IDC_PROGRAMS_LIST, code};
        SendMessageW(dialog, WM_NOTIFY, IDC_PROGRAMS_LIST, reinterpret_cast<LPARAM>(&notification));
    }
    Press(IDOK);
    EXPECT_TRUE(StaysOpen());
}

TEST_F(ProgramSelectionTest, ImageListIsGivenBackOnce) {
    AddThree();
    std::vector<HIMAGELIST> made;
    std::vector<HIMAGELIST> destroyed;
    const ReplacedImport<"ImageList_Create", decltype(ImageList_Create)> create(
        module->Handle(), [&](int width, int height, UINT flags, int initial, int growth) {
            EXPECT_EQ(width, 16);
            EXPECT_EQ(height, 16);
            EXPECT_EQ(flags, static_cast<UINT>(ILC_COLORDDB));
            EXPECT_EQ(initial, 5);
            EXPECT_EQ(growth, 0);
            made.push_back(ImageList_Create(width, height, flags, initial, growth));
            return made.back();
        });
    const ReplacedImport<"ImageList_Destroy", decltype(ImageList_Destroy)> destroy(module->Handle(),
                                                                                   [&](HIMAGELIST images) {
                                                                                       destroyed.push_back(images);
                                                                                       return ImageList_Destroy(images);
                                                                                   });
    ASSERT_TRUE(create.IsInPlace() && destroy.IsInPlace());
    for (int i = 0; i < 3; ++i) {
        Open();
        EXPECT_EQ(destroyed.size(), static_cast<std::size_t>(i));
        EXPECT_FALSE(Close(IDCANCEL));
    }
    EXPECT_EQ(made.size(), 3U);
    EXPECT_EQ(destroyed, made);
}

}  // namespace
}  // namespace kvn::test

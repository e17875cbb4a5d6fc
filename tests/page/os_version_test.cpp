// The functions that the seven choosers and the gesture editor offer on the Windows version that this program sees.
// Windows reports a version to each host program, so each version has a copy of this program; KVN_EXPECTED_OS names the
// version that the copy must find.
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "tests/support/gesture_fixture.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

const std::vector<ComboEntry> kBeforeFlip3D = {{L"Left click", 1},
                                               {L"Right click", 2},
                                               {L"Back (Internet Explorer)", 3},
                                               {L"Forward (Internet Explorer)", 4},
                                               {L"Switch applications", 5},
                                               {L"Close the window", 6},
                                               {L"Maximize the window", 7},
                                               {L"Minimize the window", 8},
                                               {L"Quick/Auto-scroll", 9},
                                               {L"Ctrl + C", 10},
                                               {L"Ctrl + X", 11},
                                               {L"Ctrl + V", 12},
                                               {L"Ctrl + Z", 13},
                                               {L"Ctrl + Y", 14},
                                               {L"My Computer", 15},
                                               {L"Enter", 16},
                                               {L"Esc", 17},
                                               {L"Tab", 18},
                                               {L"Shift", 19},
                                               {L"Alt", 20},
                                               {L"Ctrl", 21},
                                               {L"Delete", 22},
                                               {L"Back Space", 23},
                                               {L"Ctrl + S", 24},
                                               {L"Start button", 25},
                                               {L"Web browser", 26},
                                               {L"Explorer", 27},
                                               {L"Control Panel", 28},
                                               {L"Printer settings", 29},
                                               {L"Double click", 30}};
const std::vector<ComboEntry> kAfterFlip3D = {{L"Magnifying glass", 32},
                                              {L"Left scroll", 33},
                                              {L"Right scroll", 34},
                                              {L"Gesture function", 36},
                                              {L"Arbitrary key", 37}};
const std::vector<ComboEntry> kCharms = {{L"Open charms", 53},
                                         {L"Open Share charm", 39},
                                         {L"Open Settings charm", 40},
                                         {L"Open Devices charm", 41},
                                         {L"Open Second Display charm", 42},
                                         {L"Open Search charm", 43},
                                         {L"Open Ease of Access Center", 44},
                                         {L"Open Search charm and search for settings", 45},
                                         {L"Display app bar", 47},
                                         {L"Launch Narrator", 48},
                                         {L"Display app switcher", 51},
                                         {L"Cycle through apps", 54}};

class OsVersionTest : public GestureTest {
protected:
    static std::string ExpectedOs() {
        const char* expected = std::getenv("KVN_EXPECTED_OS");
        return expected == nullptr ? "" : expected;
    }

    static std::vector<ComboEntry> AllEntries() {
        const std::string os = ExpectedOs();
        std::vector<ComboEntry> entries = kBeforeFlip3D;
        const auto append = [&](const std::vector<ComboEntry>& more) {
            entries.insert(entries.end(), more.begin(), more.end());
        };
        if (os == "5.2") append({{L"Windows + Tab", 31}});
        if (os == "6.1" || os == "10.0") append({{L"Flip3D", 31}});
        append(kAfterFlip3D);
        if (os == "6.2") append(kCharms);
        append({{L"Off", 38}});
        return entries;
    }
    static std::vector<ComboEntry> Without(std::initializer_list<int> codes) {
        std::vector<ComboEntry> entries = AllEntries();
        std::erase_if(entries, [&](const ComboEntry& entry) {
            return std::find(codes.begin(), codes.end(), entry.data) != codes.end();
        });
        return entries;
    }
    static std::vector<ComboEntry> ExpectedEntries(bool isOnMouse) {
        return isOnMouse ? AllEntries() : Without({36, 19});
    }

    // The functions that the gesture editor offers.
    std::vector<ComboEntry> EditorEntries() const {
        PostMessageW(GetDlgItem(sheet->GesturePane(), IDC_GESTURES_ADD), BM_CLICK, 0, 0);
        const HWND functions = Await("the gesture editor", [] {
            const HWND editor = FindTopLevelWindow([](HWND window) {
                return IsWindowVisible(window) && GetDlgItem(window, IDC_GESTURE_FUNCTION) != nullptr;
            });
            return editor == nullptr ? nullptr : GetDlgItem(editor, IDC_GESTURE_FUNCTION);
        });
        std::vector<ComboEntry> entries = EntriesOf(functions);
        PostMessageW(GetParent(functions), WM_COMMAND, IDCANCEL, 0);
        Await("the end of the gesture editor", [=] { return !IsWindow(functions); });
        return entries;
    }
};

TEST_F(OsVersionTest, IsTheExpectedOne) {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
    EXPECT_EQ(std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion), ExpectedOs());
}

TEST_F(OsVersionTest, DecidesWhatTheChoosersOffer) {
    for (const DWORD buttons : {5UL, 7UL}) {
        mouse.buttonCount = buttons;
        Open();
        for (DWORD slot = 0; slot < 7; ++slot) {
            SCOPED_TRACE(testing::Message() << "buttons " << buttons << ", slot " << slot);
            EXPECT_EQ(EntriesOf(sheet->PaneControl(kSlotControls[slot])), ExpectedEntries(slot < buttons));
        }
        Close();
    }
}

TEST_F(OsVersionTest, DecidesWhatTheGestureEditorOffers) {
    for (const DWORD buttons : {3UL, 7UL}) {
        SCOPED_TRACE(testing::Message() << "buttons " << buttons);
        mouse.buttonCount = buttons;
        WriteProfiles({ProfileText("Default", {{"lbutton", "36"}})});
        Open();
        EXPECT_EQ(EditorEntries(), Without({36, 38})) << "whatever the mouse has";
        Close();
    }
}

TEST_F(OsVersionTest, DecidesWhetherTheGestureEditorShowsAGesturesFunction) {
    OpenWith({{"U", 54, "", ""}, {"D", 37, "", "A"}, {"R", 31, "", ""}, {"L", 51, "", ""}});
    const bool hasCharms = ExpectedOs() == "6.2";
    const auto expectFunction = [&](int row, std::optional<int> function) {
        const HWND opened = EditRow(row);
        EXPECT_EQ(SelectedData(GetDlgItem(opened, IDC_GESTURE_FUNCTION)), function) << row;
        CloseEditor(opened, IDCANCEL);
        SelectRow(row, false);
    };
    expectFunction(0, hasCharms ? std::optional(54) : std::nullopt);
    expectFunction(1, 37);
    expectFunction(2, hasCharms ? std::nullopt : std::optional(31));
    expectFunction(3, hasCharms ? std::optional(51) : std::nullopt);
}

TEST_F(OsVersionTest, KeepsCodesOfOtherVersionsAtApply) {
    WriteProfiles({ProfileText("Default", {{"rbutton", "53"}, {"tbutton", "31"}, {"button4", "35"}})});
    Open();
    ForgetModelValues();
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("rbutton"), "53");
    EXPECT_EQ(SavedElement("tbutton"), "31");
    EXPECT_EQ(SavedElement("button4"), "35");
    EXPECT_TRUE(ModelValues().empty());
}

}  // namespace
}  // namespace kvn::test

// The contents of the module's resources: every text, every dialog and its controls. Other programs and translations
// rely on the numbers, so each is repeated here.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <vector>

#include "platform/unique_resource.h"
#include "tests/support/module_under_test.h"
#include "tests/support/owning_types.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

const std::map<UINT, std::wstring> kTexts = {
    {14, L"It is not possible to register more than %d items."},
    {126, L"Default"},
    {127, L" "},
    {133, L"Open Share charm"},
    {134, L"Open Settings charm"},
    {135, L"Open Devices charm"},
    {136, L"Open Second Display charm"},
    {137, L"Open Search charm"},
    {138, L"Open Ease of Access Center"},
    {139, L"Open Search charm and search for settings"},
    {140, L"Open Quick Link menu"},
    {141, L"Display app bar"},
    {142, L"Launch Narrator"},
    {143, L"Display desktop"},
    {144, L"Lock screen orientation"},
    {145, L"Display app switcher"},
    {146, L"Switch input language"},
    {147, L"Open charms"},
    {148, L"Cycle through apps"},
    {203, L"Left click"},
    {204, L"Right click"},
    {205, L"Wheel button"},
    {206, L"- button (Back button)"},
    {207, L"+button (Forward button)"},
    {208, L"Horizontal scroll speed"},
    {210, L"The help file could not be opened."},
    {211, L"Left Click is not set."},
    {212, L"Off"},
    {213, L"Left tilt"},
    {214, L"Right tilt"},
    {215, L"Scroll speed"},
    {216, L"Revolution speed"},
    {217, L"Number of revolutions"},
    {218, L"Gesture is already registered."},
    {219, L"Allocate button function"},
    {220, L"Allocate gesture function"},
    {221, L"Gesture"},
    {222, L"Functions"},
    {223, L"Instructions"},
    {224, L"Invalid"},
    {225, L"Profile"},
    {226, L"File name"},
    {227, L"Location"},
    {228, L"A profile has not been selected."},
    {229, L"Multiple profiles have been selected."},
    {230, L"Already registered."},
    {231, L"Being used by another profile."},
    {232, L"A program has not been selected."},
    {233, L"Add profile"},
    {234, L"Delete profile"},
    {235, L"Change profile name"},
    {236, L"Copy profile"},
    {237, L"Open file"},
    {238, L"A gesture has not been selected."},
    {239, L"This gesture is already registered."},
    {240, L"Cannot delete the default profile."},
    {241, L"Cannot change the default profile name."},
    {242, L"Profile name is already in use."},
    {400, L"Left click"},
    {401, L"Right click"},
    {402, L"Back (Internet Explorer)"},
    {403, L"Forward (Internet Explorer)"},
    {404, L"Switch applications"},
    {405, L"Close the window"},
    {406, L"Maximize the window"},
    {407, L"Minimize the window"},
    {408, L"Quick/Auto-scroll"},
    {409, L"Ctrl + C"},
    {410, L"Ctrl + X"},
    {411, L"Ctrl + V"},
    {412, L"Ctrl + Z"},
    {413, L"Ctrl + Y"},
    {414, L"My Computer"},
    {415, L"Enter"},
    {416, L"Esc"},
    {417, L"Tab"},
    {418, L"Shift"},
    {419, L"Alt"},
    {420, L"Ctrl"},
    {421, L"Delete"},
    {422, L"Back Space"},
    {423, L"Ctrl + S"},
    {424, L"Start button"},
    {425, L"Web browser"},
    {426, L"Explorer"},
    {427, L"Control Panel"},
    {428, L"Printer settings"},
    {429, L"Double click"},
    {430, L"Flip3D"},
    {431, L"Magnifying glass"},
    {432, L"Windows + Tab"},
    {433, L"Left scroll"},
    {434, L"Right scroll"},
    {435, L"Gesture function"},
    {436, L"Arbitrary key"},
    {437, L"\\KORVEN\\Tarsel3\\"},
    {1000, L"The following setting values are abnormal, and will be reset to the default values."},
    {1002, L"Return current settings to initial values."},
    {1004, L"KORVEN mouse settings tool"},
    {1005, L"Failed to obtain mouse settings."},
    {1006, L"Settings failed."},
    {1007, L"To register and edit gestures, allocate gesture functions to the mouse buttons."},
    {1008, L"Are you sure you want to delete?"},
    {1009, L"U"},
    {1010, L"L"},
    {1011, L"D"},
    {1012, L"R"},
    {1013, L"Start"},
};

struct ControlRow {
    int id;  // -1: not used
    std::wstring className;
    std::wstring text;

    auto operator<=>(const ControlRow&) const = default;
};

void PrintTo(const ControlRow& row, std::ostream* out) {
    *out << row.id << " " << testing::PrintToString(row.className) << " " << testing::PrintToString(row.text);
}

struct DialogRow {
    LPCWSTR name;
    const wchar_t* caption;
    std::vector<ControlRow> controls;  // in the order of their ids
};

const std::vector<DialogRow> kDialogs = {
    {L"KorvenMouseUtil",
     L"KORVEN Tarsel 3",
     {{-1, L"Static", L"Profile"},
      {1028, L"SysTabControl32", L""},
      {1029, L"Button", L"Edit Profile"},
      {1030, L"ComboBox", L""}}},
    {MAKEINTRESOURCEW(120),
     L"",
     {{-1, L"Button", L"Button settings"},
      {-1, L"Static", L"Button 4"},
      {-1, L"Static", L"Button 5"},
      {-1, L"Static", L"Center button"},
      {-1, L"Static", L"Left button"},
      {-1, L"Static", L"Right button"},
      {-1, L"Static", L"Tilt left"},
      {-1, L"Static", L"Tilt right"},
      {1005, L"msctls_trackbar32", L""},
      {1006, L"Button", L"Help"},
      {1007, L"Button", L"Return to initial values"},
      {1008, L"msctls_trackbar32", L""},
      {1009, L"ComboBox", L""},
      {1010, L"ComboBox", L""},
      {1011, L"ComboBox", L""},
      {1012, L"ComboBox", L""},
      {1013, L"ComboBox", L""},
      {1014, L"Static", L"Slow"},
      {1015, L"Static", L"Fast"},
      {1016, L"Button", L"Horizontal scroll speed"},
      {1017, L"Static", L""},
      {1018, L"ComboBox", L""},
      {1019, L"ComboBox", L""},
      {1020, L"Button", L"Flying scroll"},
      {1021, L"Static", L"Slow"},
      {1022, L"Static", L"Fast"},
      {1023, L"msctls_trackbar32", L""},
      {1024, L"Static", L"Slow"},
      {1025, L"Static", L"Fast"},
      {1048, L"ComboBox", L""},
      {1050, L"Static", L"Revolution speed:"},
      {1051, L"Static", L"Scroll speed:"},
      {1052, L"Static", L"Number of revolutions"}}},
    {MAKEINTRESOURCEW(121),
     L"",
     {{1008, L"Button", L"Edit"},
      {1009, L"Button", L"Add"},
      {1010, L"Button", L"Delete"},
      {1039, L"SysListView32", L"Gesture"}}},
    {MAKEINTRESOURCEW(122),
     L"Edit gesture",
     {{-1, L"Static", L"Functions"},
      {-1, L"Static", L"Input gesture"},
      {-1, L"Static", L"Instructions"},
      {1, L"Button", L"OK"},
      {2, L"Button", L"Cancel"},
      {1037, L"Edit", L""},
      {1038, L"ComboBox", L""},
      {1043, L"Static", L""}}},
    {MAKEINTRESOURCEW(128),
     L"Register arbitrary key",
     {{-1, L"Static", L"Input 1:"},
      {-1, L"Static", L"Input 2:"},
      {-1, L"Static", L"Input 3:"},
      {1039, L"ComboBox", L""},
      {1040, L"ComboBox", L""},
      {1041, L"ComboBox", L""},
      {1044, L"Button", L"Clear"},
      {1045, L"Button", L"OK"},
      {1046, L"Button", L"Cancel"}}},
    {MAKEINTRESOURCEW(129), L"", {}},
    {MAKEINTRESOURCEW(119),
     L"Edit Profile",
     {{-1, L"Static", L"Allocation program"},
      {-1, L"Static", L"Profile"},
      {1, L"Button", L"OK"},
      {2, L"Button", L"Cancel"},
      {1001, L"SysListView32", L""},
      {1011, L"Button", L"Delete"},
      {1028, L"SysListView32", L""},
      {1031, L"Button", L"Add"},
      {1032, L"Button", L"Change name"},
      {1033, L"Button", L"Delete"},
      {1034, L"Button", L"Copy"},
      {1035, L"Button", L"Add"}}},
    {MAKEINTRESOURCEW(124),
     L"Add new profile",
     {{-1, L"Static", L"Profile"}, {1, L"Button", L"OK"}, {2, L"Button", L"Cancel"}, {1026, L"Edit", L""}}},
    {MAKEINTRESOURCEW(125),
     L"Select allocation program",
     {{-1, L"Button", L"Program"},
      {-1, L"Static", L"Select the allocation program for this profile."},
      {1, L"Button", L"OK"},
      {2, L"Button", L"Cancel"},
      {1023, L"Button", L"Reference"},
      {1040, L"SysListView32", L""},
      {1047, L"Button", L"Select window"}}},
    {MAKEINTRESOURCEW(131),
     L"Register allocation program",
     {{-1, L"Static", L"Register the following programs?"},
      {1, L"Button", L"OK"},
      {2, L"Button", L"Cancel"},
      {1049, L"Static", L"xxxx"}}},
};

BOOL CALLBACK CollectName(HMODULE /*module*/, LPCWSTR /*type*/, LPWSTR name, LONG_PTR names) {
    reinterpret_cast<std::set<std::wstring>*>(names)->insert(
        IS_INTRESOURCE(name) ? std::to_wstring(reinterpret_cast<ULONG_PTR>(name)) : std::wstring(name));
    return TRUE;
}

class ResourcesTest : public testing::Test {
protected:
    ModuleUnderTest module;
};

TEST_F(ResourcesTest, HoldExactlyTheseTexts) {
    for (UINT id = 0; id <= 3000; ++id) {
        const auto expected = kTexts.find(id);
        EXPECT_EQ(module.Text(id), expected == kTexts.end() ? L"" : expected->second) << id;
    }
}

TEST_F(ResourcesTest, HoldExactlyTheseDialogs) {
    std::set<std::wstring> names;
    EnumResourceNamesW(module.Handle(), MAKEINTRESOURCEW(5), CollectName, reinterpret_cast<LONG_PTR>(&names));
    EXPECT_EQ(names, (std::set<std::wstring>{L"KORVENMOUSEUTIL", L"119", L"120", L"121", L"122", L"124", L"125", L"128",
                                             L"129", L"131"}));
}

TEST_F(ResourcesTest, DialogsHaveTheseCaptionsAndControls) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    const UniqueWindow parent(
        CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr));
    for (const DialogRow& row : kDialogs) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.caption)));
        const UniqueWindow owned(CreateDialogParamW(
            module.Handle(), row.name, parent.Get(), [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0));
        ASSERT_TRUE(owned);
        const HWND dialog = owned.Get();
        EXPECT_EQ(TextOf(dialog), row.caption);
        std::vector<ControlRow> controls;
        for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
            controls.push_back({GetDlgCtrlID(child), ClassOf(child), TextOf(child)});
        }
        std::sort(controls.begin(), controls.end());
        EXPECT_EQ(controls, row.controls);
    }
}

}  // namespace
}  // namespace kvn::test

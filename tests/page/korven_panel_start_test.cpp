// The panel's start-up: the attached mouse, its profiles, and its messages to the user.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/combo_contents.h"
#include "tests/support/page_fixture.h"
#include "tests/support/recorded_writes.h"
#include "tests/support/tab_contents.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

constexpr wchar_t kDefaultBindKey[] = L"Software\\KORVEN\\MouseUtility\\DefaultBindKey";

class KorvenPanelStartTest : public PageTest {
protected:
    std::vector<std::wstring> ProfileNames() const {
        std::vector<std::wstring> names;
        for (const ComboEntry& entry : EntriesOf(sheet->PageControl(IDC_PAGE_PROFILE))) names.push_back(entry.text);
        return names;
    }
    int SelectedProfile() const { return SelectedIndex(sheet->PageControl(IDC_PAGE_PROFILE)); }
    MessageBoxSeen OpenPast(const std::string& box) {
        Start();
        MessageBoxSeen seen = AnswerMessageBox(box, IDOK);
        sheet->AwaitOpen();
        EXPECT_TRUE(sheet->IsQuiet());
        return seen;
    }
    // The page in whose start a message box has just come up.
    HWND PageBehindMessageBox() const {
        const HWND box = Await("a message box", [] { return OpenMessageBox(); });
        return FindChildWindow(GetWindow(box, GW_OWNER),
                               [](HWND child) { return GetDlgItem(child, IDC_PAGE_PROFILE) != nullptr; });
    }
    void ExpectNoButtons() const {
        for (const int control : kSlotControls) EXPECT_FALSE(IsEnabled(control)) << control;
        EXPECT_FALSE(IsEnabled(IDC_PANE_HORIZONTAL_SPEED));
    }
    // Failed reads wait between their attempts; here nobody has to.
    struct CountedSleeps {
        explicit CountedSleeps(HMODULE module)
            : replaced(module, [this](DWORD milliseconds) { pauses.push_back(milliseconds); }) {}
        std::vector<DWORD> pauses;
        ReplacedImport<"Sleep", decltype(Sleep)> replaced;
    };
};

TEST_F(KorvenPanelStartTest, FirstOpeningLeavesADefaultProfileOnDisk) {
    Open();
    ASSERT_TRUE(FileExists(ProfilePath()));
    const std::string saved = ReadFileText(ProfilePath());
    const std::vector<ProfileElement> expected = {
        {"profname", "Default"}, {"lbutton", "1"}, {"rbutton", "2"},      {"tbutton", "9"},    {"button4", "3"},
        {"button5", "4"},        {"scrolls", "4"}, {"tiltleft", "33"},    {"tiltright", "34"}, {"hspeed", "5"},
        {"hlotate", "5"},        {"hcount", "2"},  {"lbutton_etcKey", ""}};
    for (const ProfileElement& element : expected) {
        EXPECT_EQ(ElementIn(saved, 0, element.first), element.second) << element.first;
    }
    EXPECT_EQ(ElementIn(saved, 1, "profname"), "(none)");
    EXPECT_EQ(ElementIn(saved, -1, "vid"), "2748");
    EXPECT_EQ(ElementIn(saved, -1, "pid"), "161");
    EXPECT_EQ(ElementIn(saved, -1, "select_profile"), "0");
    EXPECT_EQ(ProfileNames(), std::vector<std::wstring>{L"Default"});
    EXPECT_EQ(SelectedProfile(), 0);
    EXPECT_TRUE(sheet->IsQuiet());
}

TEST_F(KorvenPanelStartTest, LaterOpeningsWriteNothing) {
    Open();
    Close();
    const std::string saved = ReadFileText(ProfilePath());
    ForgetModelValues();
    const RecordedWrites writes(module.Handle());
    Open();
    EXPECT_TRUE(writes.All().empty());
    EXPECT_TRUE(ModelValues().empty());
    EXPECT_EQ(ReadFileText(ProfilePath()), saved);
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
}

TEST_F(KorvenPanelStartTest, FileNameAndKeyNameTheModelInLowerCaseDigits) {
    mouse.vid = 0xFFFE;
    mouse.pid = 0xB;
    Open();
    EXPECT_TRUE(FileExists(user.SettingsFolder() + L"\\VIDfffePID000b.xml"));
    EXPECT_FALSE(StoredValues(L"Software\\KORVEN\\MouseUtility\\VIDfffePID000b").empty());
}

TEST_F(KorvenPanelStartTest, SelectsTheProfileThatTheFileNames) {
    WriteProfiles({ProfileText("Default"), ProfileText("Games", {{"rbutton", "20"}}), ProfileText("Work")}, 1);
    Open();
    EXPECT_EQ(ProfileNames(), (std::vector<std::wstring>{L"Default", L"Games", L"Work"}));
    EXPECT_EQ(SelectedProfile(), 1);
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 20);
}

TEST_F(KorvenPanelStartTest, SelectsTheDefaultProfileWhenTheFileNamesNone) {
    for (const int selected : {3, -1, 2147483647}) {
        WriteProfiles({ProfileText("Default"), ProfileText("Games", {{"rbutton", "20"}}), ProfileText("Work")},
                      selected);
        Open();
        EXPECT_EQ(SelectedProfile(), 0) << selected;
        EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 2) << selected;
        Close();
    }
}

TEST_F(KorvenPanelStartTest, BrokenFileIsSetAsideForADefaultProfile) {
    WriteFileText(ProfilePath(), "<data><profile>");
    Open();
    EXPECT_EQ(SavedElement("profname"), "Default");
    EXPECT_EQ(ReadFileText(user.SettingsFolder() + L"\\" + mouse.Name() + L".broken-1.xml"), "<data><profile>");
    EXPECT_FALSE(ModelValues().empty());
}

TEST_F(KorvenPanelStartTest, TellsWhenTheDefaultProfileCannotBeSaved) {
    WriteFileText(user.ApplicationData() + L"\\KORVEN", "in the folder's place");
    ExpectWarning(OpenPast("Settings failed."), L"Settings failed.");
    EXPECT_EQ(ProfileNames(), std::vector<std::wstring>{L"Default"});
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 1);
}

TEST_F(KorvenPanelStartTest, MissingDeviceValueMeansAMouseWithoutButtons) {
    for (const wchar_t* value : {L"VID", L"PID", L"HasTilt", L"ButtonCount", L"MouseImage", L"MouseFlag"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(value)));
        const CountedSleeps sleeps(module.Handle());
        PublishMouse(mouse);
        RemovePublished(value);
        sheet.emplace(module);
        ExpectWarning(AnswerMessageBox("Failed to obtain mouse settings.", IDOK), L"Failed to obtain mouse settings.");
        sheet->AwaitOpen();
        EXPECT_TRUE(sheet->IsQuiet());
        EXPECT_EQ(sleeps.pauses, std::vector<DWORD>(10, 50));
        ExpectNoButtons();
        Close();
    }
}

TEST_F(KorvenPanelStartTest, DeviceValueThatComesLateIsRead) {
    PublishMouse(mouse);
    RemovePublished(L"VID");
    int pauses = 0;
    const ReplacedImport<"Sleep", decltype(Sleep)> sleep(module.Handle(), [&](DWORD) {
        if (++pauses == 9) SetPublishedNumber(L"VID", mouse.vid);
    });
    sheet.emplace(module).AwaitOpen();
    EXPECT_TRUE(sheet->IsQuiet());
    EXPECT_EQ(pauses, 9);
    EXPECT_TRUE(FileExists(ProfilePath()));
}

TEST_F(KorvenPanelStartTest, DeviceValuesAreReadInTheirOrder) {
    const std::vector<std::wstring> order{L"HasTilt", L"ButtonCount", L"VID", L"PID", L"MouseImage", L"MouseFlag"};
    std::vector<std::wstring> read;
    const ReplacedImport<"RegQueryValueExW", decltype(RegQueryValueExW)> queries(
        module.Handle(), [&](HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) {
            if (std::ranges::find(order, name) != order.end()) read.emplace_back(name);
            return RegQueryValueExW(key, name, reserved, type, data, size);
        });
    ASSERT_TRUE(queries.IsInPlace());
    Open();
    EXPECT_EQ(read, order);
}

TEST_F(KorvenPanelStartTest, ImpossibleCapabilitiesMeanAMouseWithoutButtons) {
    struct Row {
        DWORD hasTilt;
        DWORD buttonCount;
    };
    for (const Row& row : {Row{2, 5}, Row{0xFFFFFFFF, 5}, Row{1, 8}, Row{1, 0xFFFFFFFF}}) {
        mouse.hasTilt = row.hasTilt;
        mouse.buttonCount = row.buttonCount;
        ExpectWarning(OpenPast("Failed to obtain mouse settings."), L"Failed to obtain mouse settings.");
        ExpectNoButtons();
        Close();
    }
}

TEST_F(KorvenPanelStartTest, ExtremeCapabilitiesAreAccepted) {
    for (const DWORD buttons : {0UL, 7UL}) {
        mouse.buttonCount = buttons;
        Open();
        EXPECT_TRUE(sheet->IsQuiet());
        EXPECT_EQ(IsEnabled(IDC_PANE_LEFT), buttons == 7);
        Close();
    }
}

TEST_F(KorvenPanelStartTest, AbnormalValuesAreReplacedAndListedByProfileAndField) {
    const std::vector<ProfileElement> allWrong = {{"hcount", "-1"},   {"hlotate", "-2"},  {"hspeed", "55"},
                                                  {"tiltright", "x"}, {"tiltleft", "-1"}, {"scrolls", "9"},
                                                  {"button5", "99"},  {"button4", "-5"},  {"tbutton", "55"},
                                                  {"rbutton", ""},    {"lbutton", "-1"}};
    WriteProfiles({ProfileText("Default", {{"rbutton", "20"}, {"scrolls", "0"}}), ProfileText("Games", allWrong),
                   ProfileText("Work")},
                  1);
    const MessageBoxSeen seen = OpenPast("about abnormal values");
    ExpectWarning(seen,
                  L"The following setting values are abnormal, and will be reset to the default values.\n"
                  L"DefaultHorizontal scroll speed\n"
                  L"GamesLeft click\n"
                  L"GamesRight click\n"
                  L"GamesWheel button\n"
                  L"Games- button (Back button)\n"
                  L"Games+button (Forward button)\n"
                  L"GamesHorizontal scroll speed\n"
                  L"GamesLeft tilt\n"
                  L"GamesRight tilt\n"
                  L"GamesScroll speed\n"
                  L"GamesRevolution speed\n"
                  L"GamesNumber of revolutions\n");
    const int defaults[] = {1, 2, 9, 3, 4, 33, 34};
    for (int i = 0; i < 7; ++i) EXPECT_EQ(Chosen(kSlotControls[i]), defaults[i]);
    EXPECT_EQ(Position(IDC_PANE_HORIZONTAL_SPEED), 4);
    EXPECT_EQ(Position(IDC_PANE_FLYING_SPEED), 5);
    EXPECT_EQ(Position(IDC_PANE_REVOLUTION_SPEED), 5);
    EXPECT_EQ(Chosen(IDC_PANE_REVOLUTION_COUNT), 2);
    ChooseProfile(0);
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 20);
    EXPECT_EQ(Position(IDC_PANE_HORIZONTAL_SPEED), 4);
}

TEST_F(KorvenPanelStartTest, RepairedValuesReachTheRegistryWithTheNextApply) {
    WriteProfiles({ProfileText("Default", {{"tiltleft", "77"}})});
    OpenPast("about abnormal values");
    ApplySuccessfully();
    EXPECT_EQ(ModelValues(), (std::map<std::wstring, StoredValue>{{L"BindKeyTiltLeft", StoredNumber(33)}}));
    EXPECT_EQ(SavedElement("tiltleft"), "33");
}

TEST_F(KorvenPanelStartTest, MachineWideFunctionOfTheWheelButtonIsTheDefault) {
    const SandboxedHive machine(HKEY_LOCAL_MACHINE);
    const DWORD function = 12;
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kDefaultBindKey, L"DefaultBindKey_Center", REG_DWORD, &function, 4);
    Open();
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 12);
    EXPECT_EQ(SavedElement("tbutton"), "12");
    EXPECT_EQ(ModelValues()[L"BindKeyCenter"], StoredNumber(12));
    Choose(IDC_PANE_CENTER, 20);
    Click(IDC_PANE_RESET);
    AnswerMessageBox("about the reset", IDOK);
    sheet->Settle();
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 12);
}

TEST_F(KorvenPanelStartTest, AnAbnormalWheelButtonTakesTheMachineWideFunction) {
    const SandboxedHive machine(HKEY_LOCAL_MACHINE);
    const DWORD function = 12;
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kDefaultBindKey, L"DefaultBindKey_Center", REG_DWORD, &function, 4);
    WriteProfiles({ProfileText("Default", {{"tbutton", "99"}})});
    OpenPast("about abnormal values");
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 12);
}

TEST_F(KorvenPanelStartTest, MessagesComeBetweenTheStepsThatTheyAreAbout) {
    const SandboxedHive machine(HKEY_LOCAL_MACHINE);
    const DWORD abnormal = 99;
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kDefaultBindKey, L"DefaultBindKey_Center", REG_DWORD, &abnormal, 4);
    WriteFileText(user.ApplicationData() + L"\\KORVEN", "in the folder's place");
    mouse.buttonCount = 8;
    Start();

    const HWND page = PageBehindMessageBox();
    const HWND profiles = GetDlgItem(page, IDC_PAGE_PROFILE);
    const HWND tab = GetDlgItem(page, IDC_PAGE_TAB);
    for (const wchar_t* text : {L"Failed to obtain mouse settings.", L"Settings failed."}) {
        PageBehindMessageBox();
        EXPECT_EQ(TabTextsOf(tab).size(), 0U);
        EXPECT_EQ(EntryCountOf(profiles), 0);
        ExpectWarning(AnswerMessageBox("about the mouse or the file", IDOK), text);
    }
    PageBehindMessageBox();
    EXPECT_EQ(TabTextsOf(tab).size(), 2U);
    EXPECT_EQ(SelectedText(profiles), L"Default");
    const HWND pane = FindChildWindow(page, [](HWND child) { return GetDlgItem(child, IDC_PANE_CENTER) != nullptr; });
    const HWND center = GetDlgItem(pane, IDC_PANE_CENTER);
    EXPECT_FALSE(DataOf(center).empty());
    EXPECT_EQ(SelectedData(center), std::nullopt);
    ExpectWarning(AnswerMessageBox("about abnormal values", IDOK),
                  L"The following setting values are abnormal, and will be reset to the default values.\n"
                  L"DefaultWheel button\n");
    sheet->AwaitOpen();
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 9);
}

TEST_F(KorvenPanelStartTest, UnsetOrMistypedMachineWideFunctionIsIgnored) {
    const SandboxedHive machine(HKEY_LOCAL_MACHINE);
    const DWORD unset = static_cast<DWORD>(-2);
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kDefaultBindKey, L"DefaultBindKey_Center", REG_DWORD, &unset, 4);
    Open();
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 9);
    Close();
    std::filesystem::remove(ProfilePath());
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, kDefaultBindKey, L"DefaultBindKey_Center", REG_SZ, L"5", 4);
    Open();
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 9);
}

TEST_F(KorvenPanelStartTest, TabsAreTitledAndThePanesLieInsideThem) {
    Open();
    const HWND tab = sheet->PageControl(IDC_PAGE_TAB);
    EXPECT_EQ(TabTextsOf(tab), (std::vector<std::wstring>{L"Allocate button function", L"Allocate gesture function"}));
    RECT area{};
    GetClientRect(tab, &area);
    SendMessageW(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    MapWindowPoints(tab, nullptr, reinterpret_cast<POINT*>(&area), 2);
    for (const HWND pane : {sheet->ButtonPane(), sheet->GesturePane()}) {
        RECT place{};
        GetWindowRect(pane, &place);
        EXPECT_TRUE(EqualRect(&area, &place));
        EXPECT_EQ(GetParent(pane), sheet->Page());
    }
}

}  // namespace
}  // namespace kvn::test

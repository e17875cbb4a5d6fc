// Apply: what it writes, in which order, and what happens when a write fails.
#include <windows.h>

#include <filesystem>

#include "tests/support/page_fixture.h"
#include "tests/support/recorded_writes.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;
using Values = std::map<std::wstring, StoredValue>;

class KorvenPanelApplyTest : public PageTest {
protected:
    // Opens on a stored profile, with the model's registry values written off.
    void OpenOn(const std::vector<ProfileElement>& elements = {}) {
        WriteProfiles({ProfileText("Default", elements)});
        Open();
    }
    // Presses Apply or OK and answers the failure's message; the sheet must stay and the service hear nothing.
    void FailToApply(void (OpenedSheet::*press)() const = &OpenedSheet::PressApply) {
        (*sheet.*press)();
        ExpectWarning(AnswerMessageBox("Settings failed.", IDOK), L"Settings failed.");
        EXPECT_TRUE(sheet->IsQuiet());
        EXPECT_EQ(0U, service->CountOf(ServiceMessage::SettingsChanged));
    }
};

TEST_F(KorvenPanelApplyTest, WithoutAChangeSavesTheFileAndTellsTheService) {
    OpenOn();
    std::filesystem::remove(ProfilePath());
    const RecordedWrites writes(module.Handle());
    ApplySuccessfully();
    EXPECT_TRUE(writes.All().empty());
    EXPECT_TRUE(ModelValues().empty());
    EXPECT_EQ("Default", SavedElement("profname"));
    const ServiceCall probe{0x8003, 0, 0, true};
    const ServiceCall changed{0x8002, 0, 0, false};
    EXPECT_EQ((std::vector<ServiceCall>{probe, changed}), service->Calls());
}

TEST_F(KorvenPanelApplyTest, WritesOnlyTheValueThatChanged) {
    struct Row {
        int control;
        int data;
        const wchar_t* value;
        const char* element;
    };
    const Row rows[] = {{IDC_PANE_LEFT, 5, L"BindKeyLeft", "lbutton"},
                        {IDC_PANE_RIGHT, 1, L"BindKeyRight", "rbutton"},
                        {IDC_PANE_CENTER, 36, L"BindKeyCenter", "tbutton"},
                        {IDC_PANE_BUTTON4, 19, L"BindKeyMinus", "button4"},
                        {IDC_PANE_BUTTON5, 38, L"BindKeyPlus", "button5"},
                        {IDC_PANE_TILT_LEFT, 34, L"BindKeyTiltLeft", "tiltleft"},
                        {IDC_PANE_TILT_RIGHT, 33, L"BindKeyTiltRight", "tiltright"},
                        {IDC_PANE_REVOLUTION_COUNT, 5, L"BindKeyHCount", "hcount"}};
    OpenOn({{"rbutton", "20"}, {"button5", "1"}});
    Choose(IDC_PANE_RIGHT, 1);
    Choose(IDC_PANE_RIGHT, 20);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.element);
        ForgetModelValues();
        Choose(row.control, row.data);
        ApplySuccessfully();
        EXPECT_EQ((Values{{row.value, StoredNumber(row.data)}}), ModelValues());
        EXPECT_EQ(std::to_string(row.data), SavedElement(row.element));
    }
}

TEST_F(KorvenPanelApplyTest, WritesOnlyTheSpeedThatChanged) {
    OpenOn();
    struct Row {
        int control;
        int position;
        const wchar_t* value;
        const char* element;
    };
    for (const Row& row : {Row{IDC_PANE_HORIZONTAL_SPEED, 8, L"HolizonScroll", "scrolls"},
                           Row{IDC_PANE_FLYING_SPEED, 10, L"BindKeyHSpeed", "hspeed"},
                           Row{IDC_PANE_REVOLUTION_SPEED, 1, L"BindKeyHLotate", "hlotate"}}) {
        ForgetModelValues();
        MoveTrackbar(row.control, row.position);
        ApplySuccessfully();
        EXPECT_EQ((Values{{row.value, StoredNumber(row.position)}}), ModelValues());
        EXPECT_EQ(std::to_string(row.position), SavedElement(row.element));
    }
}

TEST_F(KorvenPanelApplyTest, WritesEverythingThatChangedInItsOrder) {
    const std::string other =
        ProfileText("Other", {{"lbutton", "2"},
                              {"lbutton_etcKey", "Left Ctrl+A"},
                              {"rbutton", "1"},
                              {"rbutton_etcKey", "B"},
                              {"tbutton", "10"},
                              {"tbutton_etcKey", "C"},
                              {"button4", "11"},
                              {"button4_etcKey", "D"},
                              {"button5", "12"},
                              {"button5_etcKey", "E"},
                              {"scrolls", "8"},
                              {"tiltleft", "13"},
                              {"tiltleft_etcKey", "F"},
                              {"tiltright", "14"},
                              {"tiltright_etcKey", "Left Shift+Left Alt+G"},
                              {"hspeed", "9"},
                              {"hlotate", "10"},
                              {"hcount", "5"},
                              {"Application", "<name>Editor</name><path>C:\\edit.exe</path>"},
                              {"Application", "<name>View</name><path>C:\\v.exe</path>"},
                              {"Gesture", "<Key>UR</Key><Function>37</Function><Memo>note</Memo><EtcKey>X+Y</EtcKey>"},
                              {"Gesture", "<Key>D</Key><Function>5</Function><Memo></Memo><EtcKey></EtcKey>"}});
    WriteProfiles({ProfileText("Default"), other});
    Open();
    const RecordedWrites writes(module.Handle());
    ChooseProfile(1);
    ApplySuccessfully();
    using namespace std::string_literals;
    const std::vector<std::pair<std::wstring, StoredValue>> expected = {
        {L"BindKeyLeft", StoredNumber(2)},
        {L"BindKeyRight", StoredNumber(1)},
        {L"BindKeyCenter", StoredNumber(10)},
        {L"BindKeyMinus", StoredNumber(11)},
        {L"BindKeyPlus", StoredNumber(12)},
        {L"HolizonScroll", StoredNumber(8)},
        {L"BindKeyTiltLeft", StoredNumber(13)},
        {L"BindKeyTiltRight", StoredNumber(14)},
        {L"BindKeyLeft_etcKey", StoredText(L"Left Ctrl+A")},
        {L"BindKeyRight_etcKey", StoredText(L"B")},
        {L"BindKeyCenter_etcKey", StoredText(L"C")},
        {L"BindKeyMinus_etcKey", StoredText(L"D")},
        {L"BindKeyPlus_etcKey", StoredText(L"E")},
        {L"BindKeyTiltLeft_etcKey", StoredText(L"F")},
        {L"BindKeyTiltRight_etcKey", StoredText(L"Left Shift+Left Alt+G")},
        {L"BindKeyHSpeed", StoredNumber(9)},
        {L"BindKeyHLotate", StoredNumber(10)},
        {L"BindKeyHCount", StoredNumber(5)},
        {L"Gesture", StoredList(L"UR\t37\tnote\tX+Y\0D\t5\t\t\0\0"s)},
        {L"ProfileApp", StoredList(L"Editor\tC:\\edit.exe\0View\tC:\\v.exe\0\0"s)}};
    EXPECT_EQ(expected, writes.All());
    EXPECT_EQ((Values(expected.begin(), expected.end())), ModelValues());
    EXPECT_EQ("1", SavedElement("select_profile", -1));
}

TEST_F(KorvenPanelApplyTest, EmptyListsAndTextsAreWrittenWhenTheyWereNotEmpty) {
    WriteProfiles({ProfileText("Default"), ProfileText("Other", {{"lbutton_etcKey", "A"},
                                                                 {"Application", "<name>E</name>"},
                                                                 {"Gesture", "<Key>U</Key>"}})},
                  1);
    Open();
    ChooseProfile(0);
    ApplySuccessfully();
    EXPECT_EQ((Values{{L"BindKeyLeft_etcKey", StoredText(L"")},
                      {L"Gesture", StoredList(std::wstring(1, L'\0'))},
                      {L"ProfileApp", StoredList(std::wstring(1, L'\0'))}}),
              ModelValues());
}

TEST_F(KorvenPanelApplyTest, ServiceHearsOfItAfterRegistryAndFileAreWritten) {
    OpenOn();
    std::string element;
    Values values;
    service->WhenCalled(ServiceMessage::SettingsChanged, [&] {
        element = SavedElement("rbutton");
        values = ModelValues();
    });
    Choose(IDC_PANE_RIGHT, 20);
    ApplySuccessfully();
    EXPECT_EQ("20", element);
    EXPECT_EQ((Values{{L"BindKeyRight", StoredNumber(20)}}), values);
}

TEST_F(KorvenPanelApplyTest, AppliedTwiceIsWrittenOnceAndToldTwice) {
    OpenOn();
    const RecordedWrites writes(module.Handle());
    Choose(IDC_PANE_RIGHT, 20);
    ApplySuccessfully();
    ApplySuccessfully();
    EXPECT_EQ(std::vector<std::wstring>{L"BindKeyRight"}, writes.Names());
    EXPECT_EQ(2U, service->CountOf(ServiceMessage::SettingsChanged));
}

TEST_F(KorvenPanelApplyTest, SucceedsWithoutTheService) {
    OpenOn();
    service.reset();
    Choose(IDC_PANE_RIGHT, 20);
    sheet->PressOk();
    EXPECT_EQ(1, sheet->AwaitClosed());
    EXPECT_EQ("20", SavedElement("rbutton"));
}

TEST_F(KorvenPanelApplyTest, FailedWriteIsReportedOnceAndNothingIsSaved) {
    OpenOn();
    const std::string saved = ReadFileText(ProfilePath());
    RecordedWrites writes(module.Handle());
    writes.Fail(L"BindKeyRight");
    writes.Fail(L"BindKeyPlus");
    Choose(IDC_PANE_RIGHT, 20);
    Choose(IDC_PANE_CENTER, 21);
    Choose(IDC_PANE_BUTTON5, 22);
    Choose(IDC_PANE_TILT_RIGHT, 23);
    FailToApply();
    EXPECT_EQ(saved, ReadFileText(ProfilePath()));
    EXPECT_TRUE(sheet->IsApplyEnabled());
    // The writes went on after the one that failed.
    EXPECT_EQ((std::vector<std::wstring>{L"BindKeyRight", L"BindKeyCenter", L"BindKeyPlus", L"BindKeyTiltRight"}),
              writes.Names());
    EXPECT_EQ((Values{{L"BindKeyCenter", StoredNumber(21)}, {L"BindKeyTiltRight", StoredNumber(23)}}), ModelValues());

    FailToApply(&OpenedSheet::PressOk);
    EXPECT_TRUE(IsWindowVisible(sheet->Sheet()));

    writes.FailNothing();
    writes.Forget();
    ApplySuccessfully();
    EXPECT_EQ((std::vector<std::wstring>{L"BindKeyRight", L"BindKeyCenter", L"BindKeyPlus", L"BindKeyTiltRight"}),
              writes.Names());
    EXPECT_EQ("20", SavedElement("rbutton"));
}

TEST_F(KorvenPanelApplyTest, AnySingleFailedWriteCounts) {
    const std::string other = ProfileText(
        "Other",
        {{"lbutton_etcKey", "A"}, {"hcount", "3"}, {"Application", "<name>E</name>"}, {"Gesture", "<Key>U</Key>"}});
    for (const wchar_t* value : {L"BindKeyLeft_etcKey", L"BindKeyHCount", L"Gesture", L"ProfileApp"}) {
        WriteProfiles({ProfileText("Default"), other});
        Open();
        RecordedWrites writes(module.Handle());
        writes.Fail(value);
        ChooseProfile(1);
        FailToApply();
        Close();
    }
}

TEST_F(KorvenPanelApplyTest, FileThatCannotBeSavedIsAFailure) {
    OpenOn();
    std::filesystem::remove_all(user.SettingsFolder());
    WriteFileText(user.SettingsFolder(), "in the folder's place");
    FailToApply();
    FailToApply(&OpenedSheet::PressOk);
    std::filesystem::remove(user.SettingsFolder());
    std::filesystem::create_directories(user.SettingsFolder());
    ApplySuccessfully();
    EXPECT_TRUE(FileExists(ProfilePath()));
}

TEST_F(KorvenPanelApplyTest, FileInUseIsAFailureAndStaysAsItIs) {
    OpenOn();
    const std::string saved = ReadFileText(ProfilePath());
    const HANDLE held =
        CreateFileW(ProfilePath().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, held);
    Choose(IDC_PANE_RIGHT, 20);
    FailToApply();
    CloseHandle(held);
    EXPECT_EQ(saved, ReadFileText(ProfilePath()));
}

TEST_F(KorvenPanelApplyTest, KeepsCodesThatAreNotOffered) {
    OpenOn({{"rbutton", "35"}, {"tbutton", "53"}, {"button4", "0"}, {"tiltleft", "36"}, {"hcount", "7"}});
    for (const int control :
         {IDC_PANE_RIGHT, IDC_PANE_CENTER, IDC_PANE_BUTTON4, IDC_PANE_TILT_LEFT, IDC_PANE_REVOLUTION_COUNT}) {
        EXPECT_EQ(std::nullopt, Chosen(control)) << control;
    }
    Choose(IDC_PANE_BUTTON5, 20);
    ApplySuccessfully();
    EXPECT_EQ((Values{{L"BindKeyPlus", StoredNumber(20)}}), ModelValues());
    EXPECT_EQ("35", SavedElement("rbutton"));
    EXPECT_EQ("53", SavedElement("tbutton"));
    EXPECT_EQ("0", SavedElement("button4"));
    EXPECT_EQ("36", SavedElement("tiltleft"));
    EXPECT_EQ("7", SavedElement("hcount"));
}

TEST_F(KorvenPanelApplyTest, ReadsTrackbarsAsTheyStand) {
    OpenOn({{"hspeed", "54"}, {"hlotate", "0"}});
    ApplySuccessfully();
    EXPECT_EQ((Values{{L"BindKeyHSpeed", StoredNumber(10)}, {L"BindKeyHLotate", StoredNumber(1)}}), ModelValues());
}

TEST_F(KorvenPanelApplyTest, NoRevolutionsAreStoredAsUnset) {
    OpenOn({{"hcount", "0"}});
    EXPECT_EQ(-2, Chosen(IDC_PANE_REVOLUTION_COUNT));
    ApplySuccessfully();
    EXPECT_EQ((Values{{L"BindKeyHCount", StoredNumber(-2)}}), ModelValues());
    EXPECT_EQ("-2", SavedElement("hcount"));
}

TEST_F(KorvenPanelApplyTest, ProfileThatIsLeftKeepsWhatWasChosenInIt) {
    WriteProfiles({ProfileText("Default"), ProfileText("Games", {{"rbutton", "20"}})});
    Open();
    Choose(IDC_PANE_RIGHT, 21);
    ChooseProfile(1);
    EXPECT_EQ(20, Chosen(IDC_PANE_RIGHT));
    EXPECT_TRUE(sheet->IsApplyEnabled());
    Choose(IDC_PANE_RIGHT, 22);
    ChooseProfile(0);
    EXPECT_EQ(21, Chosen(IDC_PANE_RIGHT));
    EXPECT_EQ("(none)", SavedElement("lbutton")) << "the file was written before the apply";
    EXPECT_TRUE(ModelValues().empty());
    ApplySuccessfully();
    EXPECT_EQ("21", SavedElement("rbutton"));
    EXPECT_EQ("22", SavedElement("rbutton", 1));
    EXPECT_EQ((Values{{L"BindKeyRight", StoredNumber(21)}}), ModelValues());
}

}  // namespace
}  // namespace kvn::test

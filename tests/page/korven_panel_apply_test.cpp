// Apply: what it writes, in which order, and what happens when a write fails.
#include <windows.h>

#include <filesystem>

#include "platform/unique_resource.h"
#include "tests/support/page_fixture.h"
#include "tests/support/recorded_writes.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;
using Values = std::map<std::wstring, StoredValue>;

class KorvenPanelApplyTest : public PageTest {
protected:
    // Opens on a stored profile. The registry has no values of the model.
    void OpenOn(const std::vector<ProfileElement>& elements = {}) {
        WriteProfiles({ProfileText("Default", elements)});
        Open();
    }
    // Presses Apply or OK and answers the failure's message. The sheet must stay, and the service must not be notified.
    void FailToApply(void (OpenedSheet::*press)() const = &OpenedSheet::PressApply) {
        (*sheet.*press)();
        ExpectWarning(AnswerMessageBox("Settings failed.", IDOK), L"Settings failed.");
        EXPECT_TRUE(sheet->IsQuiet());
        EXPECT_EQ(service->CountOf(ServiceMessage::SettingsChanged), 0U);
    }
};

TEST_F(KorvenPanelApplyTest, WithoutAChangeSavesTheFileAndNotifiesTheService) {
    OpenOn();
    std::filesystem::remove(ProfilePath());
    const RecordedWrites writes(module.Handle());
    ApplySuccessfully();
    EXPECT_TRUE(writes.All().empty());
    EXPECT_TRUE(ModelValues().empty());
    EXPECT_EQ(SavedElement("profname"), "Default");
    const ServiceCall probe{0x8003, 0, 0, true};
    const ServiceCall changed{0x8002, 0, 0, false};
    EXPECT_EQ(service->Calls(), (std::vector<ServiceCall>{probe, changed}));
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
        EXPECT_EQ(ModelValues(), (Values{{row.value, StoredNumber(row.data)}}));
        EXPECT_EQ(SavedElement(row.element), std::to_string(row.data));
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
        EXPECT_EQ(ModelValues(), (Values{{row.value, StoredNumber(row.position)}}));
        EXPECT_EQ(SavedElement(row.element), std::to_string(row.position));
    }
}

TEST_F(KorvenPanelApplyTest, EmptyListsAndTextsAreWrittenWhenTheyWereNotEmpty) {
    WriteProfiles({ProfileText("Default"), ProfileText("Other", {{"lbutton_etcKey", "A"},
                                                                 {"Application", "<name>E</name>"},
                                                                 {"Gesture", "<Key>U</Key>"}})},
                  1);
    Open();
    ChooseProfile(0);
    ApplySuccessfully();
    EXPECT_EQ(ModelValues(), (Values{{L"BindKeyLeft_etcKey", StoredText(L"")},
                                     {L"Gesture", StoredList(std::wstring(1, L'\0'))},
                                     {L"ProfileApp", StoredList(std::wstring(1, L'\0'))}}));
}

TEST_F(KorvenPanelApplyTest, ServiceIsNotifiedAfterRegistryAndFileAreWritten) {
    OpenOn();
    std::string element;
    Values values;
    service->WhenCalled(ServiceMessage::SettingsChanged, [&] {
        element = SavedElement("rbutton");
        values = ModelValues();
    });
    Choose(IDC_PANE_RIGHT, 20);
    ApplySuccessfully();
    EXPECT_EQ(element, "20");
    EXPECT_EQ(values, (Values{{L"BindKeyRight", StoredNumber(20)}}));
}

TEST_F(KorvenPanelApplyTest, AppliedTwiceWritesOnceAndNotifiesTwice) {
    OpenOn();
    const RecordedWrites writes(module.Handle());
    Choose(IDC_PANE_RIGHT, 20);
    ApplySuccessfully();
    ApplySuccessfully();
    EXPECT_EQ(writes.Names(), std::vector<std::wstring>{L"BindKeyRight"});
    EXPECT_EQ(service->CountOf(ServiceMessage::SettingsChanged), 2U);
}

TEST_F(KorvenPanelApplyTest, SucceedsWithoutTheService) {
    OpenOn();
    service.reset();
    Choose(IDC_PANE_RIGHT, 20);
    sheet->PressOk();
    EXPECT_EQ(sheet->AwaitClosed(), 1);
    EXPECT_EQ(SavedElement("rbutton"), "20");
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
    EXPECT_EQ(ReadFileText(ProfilePath()), saved);
    EXPECT_TRUE(sheet->IsApplyEnabled());
    // The writes continued after the failed one.
    EXPECT_EQ(writes.Names(),
              (std::vector<std::wstring>{L"BindKeyRight", L"BindKeyCenter", L"BindKeyPlus", L"BindKeyTiltRight"}));
    EXPECT_EQ(ModelValues(), (Values{{L"BindKeyCenter", StoredNumber(21)}, {L"BindKeyTiltRight", StoredNumber(23)}}));

    FailToApply(&OpenedSheet::PressOk);
    EXPECT_TRUE(IsWindowVisible(sheet->Sheet()));

    writes.FailNothing();
    writes.Forget();
    ApplySuccessfully();
    EXPECT_EQ(writes.Names(),
              (std::vector<std::wstring>{L"BindKeyRight", L"BindKeyCenter", L"BindKeyPlus", L"BindKeyTiltRight"}));
    EXPECT_EQ(SavedElement("rbutton"), "20");
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
    const platform::UniqueFile held(
        CreateFileW(ProfilePath().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held);
    Choose(IDC_PANE_RIGHT, 20);
    FailToApply();
    EXPECT_EQ(ReadFileText(ProfilePath()), saved);
}

TEST_F(KorvenPanelApplyTest, KeepsCodesThatAreNotOffered) {
    OpenOn({{"rbutton", "35"}, {"tbutton", "53"}, {"button4", "0"}, {"tiltleft", "36"}, {"hcount", "7"}});
    for (const int control :
         {IDC_PANE_RIGHT, IDC_PANE_CENTER, IDC_PANE_BUTTON4, IDC_PANE_TILT_LEFT, IDC_PANE_REVOLUTION_COUNT}) {
        EXPECT_EQ(Chosen(control), std::nullopt) << control;
    }
    Choose(IDC_PANE_BUTTON5, 20);
    ApplySuccessfully();
    EXPECT_EQ(ModelValues(), (Values{{L"BindKeyPlus", StoredNumber(20)}}));
    EXPECT_EQ(SavedElement("rbutton"), "35");
    EXPECT_EQ(SavedElement("tbutton"), "53");
    EXPECT_EQ(SavedElement("button4"), "0");
    EXPECT_EQ(SavedElement("tiltleft"), "36");
    EXPECT_EQ(SavedElement("hcount"), "7");
}

TEST_F(KorvenPanelApplyTest, ReadsTrackbarsAsTheyStand) {
    OpenOn({{"hspeed", "54"}, {"hlotate", "0"}});
    ApplySuccessfully();
    EXPECT_EQ(ModelValues(), (Values{{L"BindKeyHSpeed", StoredNumber(10)}, {L"BindKeyHLotate", StoredNumber(1)}}));
}

TEST_F(KorvenPanelApplyTest, NoRevolutionsAreStoredAsUnset) {
    OpenOn({{"hcount", "0"}});
    EXPECT_EQ(Chosen(IDC_PANE_REVOLUTION_COUNT), -2);
    ApplySuccessfully();
    EXPECT_EQ(ModelValues(), (Values{{L"BindKeyHCount", StoredNumber(-2)}}));
    EXPECT_EQ(SavedElement("hcount"), "-2");
}

TEST_F(KorvenPanelApplyTest, ProfileThatIsLeftKeepsTheChoicesMadeInIt) {
    WriteProfiles({ProfileText("Default"), ProfileText("Games", {{"rbutton", "20"}})});
    Open();
    Choose(IDC_PANE_RIGHT, 21);
    ChooseProfile(1);
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 20);
    EXPECT_TRUE(sheet->IsApplyEnabled());
    Choose(IDC_PANE_RIGHT, 22);
    ChooseProfile(0);
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 21);
    EXPECT_EQ(SavedElement("lbutton"), "(none)") << "the file was written before the apply";
    EXPECT_TRUE(ModelValues().empty());
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("rbutton"), "21");
    EXPECT_EQ(SavedElement("rbutton", 1), "22");
    EXPECT_EQ(ModelValues(), (Values{{L"BindKeyRight", StoredNumber(21)}}));
}

}  // namespace
}  // namespace kvn::test

// "Return to initial values", and the initial values that the service sends.
#include <windows.h>

#include <array>
#include <cstdint>

#include "tests/support/page_fixture.h"
#include "tests/support/recorded_writes.h"

namespace kvn::test {
namespace {

using InitialRecord = std::array<std::int32_t, 11>;

// In the order of the profile file.
constexpr InitialRecord kSent{2, 1, 10, 11, 12, 8, 13, 14, 9, 10, 5};

constexpr char kProgram[] = "<name>Editor</name><path>C:\\edit.exe</path>";
constexpr char kGesture[] = "<Key>UR</Key><Function>5</Function><Memo>note</Memo><EtcKey></EtcKey>";

class KorvenPanelResetTest : public PageTest {
protected:
    void SetUp() override {
        WriteProfiles({ProfileText("Default", {{"rbutton", "20"},
                                               {"tbutton", "21"},
                                               {"scrolls", "7"},
                                               {"hcount", "3"},
                                               {"button4", "37"},
                                               {"button4_etcKey", "Left Ctrl+A"},
                                               {"Application", kProgram},
                                               {"Gesture", kGesture}})});
        Open();
    }

    MessageBoxSeen Reset(int answer) {
        Click(IDC_PANE_RESET);
        const MessageBoxSeen seen = AnswerMessageBox("about the reset", answer);
        EXPECT_TRUE(sheet->IsQuiet());
        return seen;
    }

    // The eleven numbers as the pane shows them, in the order of the file; -99 without a selection.
    InitialRecord Shown() const {
        const auto chosen = [this](int control) { return Chosen(control).value_or(-99); };
        return {chosen(IDC_PANE_LEFT),
                chosen(IDC_PANE_RIGHT),
                chosen(IDC_PANE_CENTER),
                chosen(IDC_PANE_BUTTON4),
                chosen(IDC_PANE_BUTTON5),
                Position(IDC_PANE_HORIZONTAL_SPEED),
                chosen(IDC_PANE_TILT_LEFT),
                chosen(IDC_PANE_TILT_RIGHT),
                Position(IDC_PANE_FLYING_SPEED),
                Position(IDC_PANE_REVOLUTION_SPEED),
                chosen(IDC_PANE_REVOLUTION_COUNT)};
    }

    static constexpr InitialRecord kDefaults{1, 2, 9, 3, 4, 4, 33, 34, 5, 5, 2};
};

TEST_F(KorvenPanelResetTest, AsksFirst) {
    const MessageBoxSeen seen = Reset(IDCANCEL);
    EXPECT_EQ(seen.caption, kCaption);
    EXPECT_EQ(seen.text, L"Return current settings to initial values.");
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONINFORMATION));
    EXPECT_EQ(seen.buttons, (std::vector<int>{IDOK, IDCANCEL}));
    EXPECT_EQ(seen.owner, sheet->Sheet());
}

TEST_F(KorvenPanelResetTest, DeclinedChangesNothing) {
    const InitialRecord before = Shown();
    Reset(IDCANCEL);
    EXPECT_EQ(Shown(), before);
    EXPECT_FALSE(sheet->IsApplyEnabled());
}

TEST_F(KorvenPanelResetTest, DeclinedLeavesApplyEnabledIfItWas) {
    MoveTrackbar(IDC_PANE_HORIZONTAL_SPEED, 2);
    Reset(IDCANCEL);
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(KorvenPanelResetTest, AcceptedShowsTheDefaultsAndMarksAChange) {
    Reset(IDOK);
    EXPECT_EQ(Shown(), kDefaults);
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(KorvenPanelResetTest, EachAnswerCountsForItself) {
    Reset(IDCANCEL);
    Reset(IDOK);
    EXPECT_TRUE(sheet->IsApplyEnabled());
    ApplySuccessfully();
    EXPECT_FALSE(sheet->IsApplyEnabled());
    Reset(IDCANCEL);
    EXPECT_FALSE(sheet->IsApplyEnabled());
}

TEST_F(KorvenPanelResetTest, WritesNothingUntilApply) {
    const std::string saved = ReadFileText(ProfilePath());
    const RecordedWrites writes(module.Handle());
    Reset(IDOK);
    EXPECT_TRUE(writes.All().empty());
    EXPECT_EQ(ReadFileText(ProfilePath()), saved);
    EXPECT_EQ(service->Calls().size(), 1U);
    ApplySuccessfully();
    EXPECT_EQ(writes.Names(), (std::vector<std::wstring>{L"BindKeyRight", L"BindKeyCenter", L"BindKeyMinus",
                                                         L"HolizonScroll", L"BindKeyHCount"}));
    EXPECT_EQ(SavedElement("rbutton"), "2");
}

TEST_F(KorvenPanelResetTest, ReachesThePageAsACommandToo) {
    sheet->Start([page = sheet->Page()] { SendMessageW(page, WM_COMMAND, IDC_PANE_RESET, 0); });
    AnswerMessageBox("about the reset", IDOK);
    sheet->Settle();
    EXPECT_EQ(Shown(), kDefaults);
    EXPECT_TRUE(sheet->IsApplyEnabled());
}

TEST_F(KorvenPanelResetTest, TakesTheInitialValuesThatTheServiceSent) {
    service->SendData(sheet->Page(), kSent.data(), sizeof kSent);
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 20) << "the values are shown before the reset";
    EXPECT_FALSE(sheet->IsApplyEnabled());
    Reset(IDOK);
    EXPECT_EQ(Shown(), kSent);
}

TEST_F(KorvenPanelResetTest, LastRecordOfTheServiceCounts) {
    InitialRecord last = kSent;
    last[1] = 7;
    service->SendData(sheet->Page(), kSent.data(), sizeof kSent);
    service->SendData(sheet->Page(), last.data(), sizeof last);
    Reset(IDOK);
    EXPECT_EQ(Shown(), last);
}

TEST_F(KorvenPanelResetTest, ShortRecordIsIgnored) {
    for (const DWORD size : {0UL, 1UL, 4UL, 40UL, 43UL}) service->SendData(sheet->Page(), kSent.data(), size);
    service->SendData(sheet->Page(), nullptr, 0);
    Reset(IDOK);
    EXPECT_EQ(Shown(), kDefaults);
}

TEST_F(KorvenPanelResetTest, RestOfALongRecordIsIgnored) {
    std::array<std::int32_t, 300> longer{};
    longer.fill(3);
    std::copy(kSent.begin(), kSent.end(), longer.begin());
    service->SendData(sheet->Page(), longer.data(), sizeof longer);
    Reset(IDOK);
    EXPECT_EQ(Shown(), kSent);
}

TEST_F(KorvenPanelResetTest, RecordOfAnotherSenderIsIgnored) {
    COPYDATASTRUCT data{0, sizeof kSent, const_cast<std::int32_t*>(kSent.data())};
    for (const HWND sender : {HWND{nullptr}, sheet->Sheet(), sheet->Page(), GetDesktopWindow()}) {
        SendMessageW(sheet->Page(), WM_COPYDATA, reinterpret_cast<WPARAM>(sender), reinterpret_cast<LPARAM>(&data));
    }
    Reset(IDOK);
    EXPECT_EQ(Shown(), kDefaults);
}

TEST_F(KorvenPanelResetTest, RecordIsIgnoredWhenNoServiceRuns) {
    service.reset();
    COPYDATASTRUCT data{0, sizeof kSent, const_cast<std::int32_t*>(kSent.data())};
    SendMessageW(sheet->Page(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
    Reset(IDOK);
    EXPECT_EQ(Shown(), kDefaults);
}

TEST_F(KorvenPanelResetTest, SentValuesOutOfRangeAreReplacedByTheDefaults) {
    InitialRecord sent = kSent;
    sent[1] = 55;
    sent[2] = -5;
    sent[10] = -2;
    service->SendData(sheet->Page(), sent.data(), sizeof sent);
    Reset(IDOK);
    EXPECT_EQ(Chosen(IDC_PANE_RIGHT), 2);
    EXPECT_EQ(Chosen(IDC_PANE_CENTER), 9);
    EXPECT_EQ(Chosen(IDC_PANE_REVOLUTION_COUNT), -2);
    EXPECT_EQ(Chosen(IDC_PANE_LEFT), 2);
}

TEST_F(KorvenPanelResetTest, LeavesTheKeysOfTheProfileAlone) {
    EXPECT_EQ(SelectedText(sheet->PaneControl(IDC_PANE_BUTTON4)), L"Arbitrary key[Left Ctrl+A]");
    Reset(IDOK);
    const std::vector<ComboEntry> entries = EntriesOf(sheet->PaneControl(IDC_PANE_BUTTON4));
    const auto index = static_cast<std::size_t>(IndexOfData(sheet->PaneControl(IDC_PANE_BUTTON4), 37));
    EXPECT_EQ(entries[index].text, L"Arbitrary key");
    ApplySuccessfully();
    EXPECT_EQ(SavedElement("button4_etcKey"), "Left Ctrl+A");
}

TEST_F(KorvenPanelResetTest, LeavesGesturesAndProgramsAlone) {
    ForgetModelValues();
    Reset(IDOK);
    ApplySuccessfully();
    const std::string saved = ReadFileText(ProfilePath());
    for (const char* text : {"<Key>UR</Key>", "<Memo>note</Memo>", "<path>C:\\edit.exe</path>"}) {
        EXPECT_NE(saved.find(text), std::string::npos) << text;
    }
    const auto values = ModelValues();
    EXPECT_EQ(values.count(L"Gesture"), 0U) << "it has not changed";
    EXPECT_EQ(values.count(L"ProfileApp"), 0U);
}

}  // namespace
}  // namespace kvn::test

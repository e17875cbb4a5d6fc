// Memory that is refused while the open page saves, changes its profile or is told something.
#include "resources/resource.h"
#include "tests/faults/memory_fault_fixture.h"
#include "tests/support/combo_contents.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

class MemoryOfSavingTest : public MemoryFaultTest {
protected:
    void SetUp() override {
        MemoryFaultTest::SetUp();
        page.AddAndOpen();
        ApplyEverything();
    }
    void TearDown() override {
        ExpectSuccessfulApply();
        CloseAndExpectNoLeak();
    }

    // What an apply of this profile leaves behind.
    SavedState StateOf(int profile) {
        page.ChooseProfile(profile);
        ExpectSuccessfulApply();
        return State();
    }
    std::size_t NoticesSoFar() const { return service.CountOf(platform::ServiceMessage::SettingsChanged); }
    int ShownProfile() const { return SelectedIndex(page.PageControl(IDC_PAGE_PROFILE)); }
};

TEST_F(MemoryOfSavingTest, ARefusedApplyLeavesTheOldFileOrTheNewOneAndTheNextOneMendsIt) {
    const std::vector<SavedState> states{StateOf(0), StateOf(1)};
    ASSERT_NE(states[1].file, states[0].file);
    int from = 1;
    bool isApplied = false;
    SweepRefusals({[&] {
                       page.ChooseProfile(1 - from);
                       page.ForgetMessages();
                   },
                   [&] { isApplied = page.Apply(); },
                   [&] {
                       EXPECT_EQ(State().file, states[static_cast<std::size_t>(isApplied ? 1 - from : from)].file);
                       ExpectSuccessfulApply();
                       from = 1 - from;
                       EXPECT_EQ(State(), states[static_cast<std::size_t>(from)]);
                   }});
}

TEST_F(MemoryOfSavingTest, ARefusedApplyIsReported) {
    // Alone, since a report takes memory too.
    SweepRefusals({true}, {[&] { page.ForgetMessages(); },
                           [&] {
                               const std::size_t before = NoticesSoFar();
                               const bool isApplied = page.Apply();
                               EXPECT_EQ(page.Messages().empty(), isApplied);
                               for (const auto& text : page.Messages()) EXPECT_EQ(text, L"Settings failed.");
                               EXPECT_EQ(NoticesSoFar(), before + (isApplied ? 1 : 0));
                           },
                           [] {}});
}

TEST_F(MemoryOfSavingTest, ARefusedChangeOfTheProfileMixesNothing) {
    const SavedState first = StateOf(0);
    const SavedState second = StateOf(1);
    SweepRefusals({[&] { page.ChooseProfile(0); }, [&] { page.ChooseProfile(1); },
                   [&] {
                       const bool isSecond = ShownProfile() == 1;
                       ExpectSuccessfulApply();
                       EXPECT_EQ(State().file, isSecond ? second.file : first.file);
                       EXPECT_EQ(StateOf(1), second);
                       EXPECT_EQ(StateOf(0), first);
                   }});
}

TEST_F(MemoryOfSavingTest, RefusedMessagesAreSurvived) {
    const std::int32_t record[11] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 5};
    const std::string before = State().file;
    SweepRefusals({[] {},
                   [&] {
                       service.SendData(page.Window(), record, sizeof record);
                       RedrawWindow(page.Window(), nullptr, nullptr,
                                    RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
                       SendMessageW(page.ButtonPane(), WM_COMMAND, IDC_PANE_HELP, 0);
                       SendMessageW(page.ButtonPane(), WM_COMMAND, IDC_PANE_RESET, 0);
                       SendMessageW(page.PaneControl(IDC_PANE_RIGHT), WM_SETFOCUS, 0, 0);
                       SendMessageW(page.PaneControl(IDC_PANE_RIGHT), WM_KILLFOCUS, 0, 0);
                   },
                   [&] { EXPECT_EQ(State().file, before); }});
    // Brings back what the profile has instead of the initial values.
    page.ChooseProfile(1);
}

}  // namespace
}  // namespace kvn::test

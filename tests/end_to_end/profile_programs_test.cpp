// Programs that are tied to profiles: from the Start menu, from a window and from a file; and when they are stored.
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_story.h"
#include "tests/end_to_end/waiting.h"

namespace kvn::end_to_end {
namespace {

class TyingPrograms : public ProfileStory {
protected:
    std::vector<ProfileText> StoredProfiles() const override { return {{}, {"Painting"}, racing}; }

    // The profile file with these programs of the profile "Painting".
    std::vector<ProfileText> WithPrograms(const std::vector<ProgramRow>& programs) const {
        ProfileText painting{"Painting"};
        for (const ProgramRow& program : programs) painting.programs.push_back(InFile(program));
        return {{}, painting, racing};
    }

    const ProfileText racing{"Racing", {}, {}, {InFile(Racing())}};
};

TEST_F(TyingPrograms, ProgramsThatAreMerelyAddedComeIntoTheFileWithTheNextApply) {
    const Sheet sheet = OpenSheetWithService();
    {
        const ProfileEditor editor = OpenEditor(sheet);
        editor.Select(1);
        AddFromStartMenu(editor, Easel());
        AddFromFile(editor, Notepad());
        editor.ExpectPrograms({Easel(), Notepad()});
        editor.CloseWith(IDOK);
    }
    ExpectStored(StoredProfiles(), 0, {});
    const ProfileEditor editor = OpenEditor(sheet);
    editor.Select(1);
    editor.ExpectPrograms({Easel(), Notepad()});
    editor.CloseWith(IDCANCEL);
    ExpectStored(StoredProfiles(), 0, {});

    Apply(sheet);
    ExpectStored(WithPrograms({Easel(), Notepad()}), 0, {});
    sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 1);
    Apply(sheet);
    ExpectStored(WithPrograms({Easel(), Notepad()}), 1, {{"ProfileApp", InRegistry({Easel(), Notepad()})}});
    Close(sheet, IDOK);
}

TEST_F(TyingPrograms, ProgramOfAnotherProfileOrOfThisOneIsRefused) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditor(sheet);
    editor.Select(1);
    AddFromStartMenu(editor, Racing());
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Being used by another profile.");
    editor.ExpectPrograms({});
    AddFromFile(editor, Notepad());
    editor.ExpectPrograms({Notepad()});
    AddFromFile(editor, Notepad());
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Already registered.");
    editor.ExpectPrograms({Notepad()});
    editor.CloseWith(IDOK);
    Apply(sheet);
    ExpectStored(WithPrograms({Notepad()}), 0, {});
    Close(sheet, IDOK);
}

TEST_F(TyingPrograms, SeveralAreTakenAtOnceInTheOrderOfTheList) {
    WriteFileBytes(ProfileFile(), ProfileFileText({{}, {"Painting"}}));
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditor(sheet);
    editor.Select(1);
    editor.Click(IDC_PROFILES_ADD_PROGRAM);
    const ProgramSelection selection(sheet.ProcessId());
    const int easel = selection.RowOf(Easel());
    ASSERT_EQ(selection.RowOf(Racing()), easel + 1);
    selection.Pick(easel + 1);
    PressTogether({VK_LSHIFT, VK_TAB});
    selection.WaitForFocus(IDC_PROGRAMS_LIST);
    PressTogether({VK_LSHIFT, VK_UP});
    WaitFor("both rows", [&] { return selection.SelectedRows() == std::vector<int>{easel, easel + 1}; });
    PressKey(VK_RETURN);
    selection.WaitUntilClosed();
    editor.ExpectPrograms({Easel(), Racing()});
    editor.CloseWith(IDCANCEL);
    Close(sheet, IDCANCEL);
}

TEST_F(TyingPrograms, CancelledSelectionAddsNothing) {
    StartNotepad();
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditor(sheet);
    editor.Click(IDC_PROFILES_ADD_PROGRAM);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"A profile has not been selected.");
    editor.Select(1);
    editor.Click(IDC_PROFILES_ADD_PROGRAM);
    const ProgramSelection selection(sheet.ProcessId());
    selection.Pick(selection.RowOf(Easel()));
    selection.Click(IDC_PROGRAMS_SELECT_WINDOW);
    const WindowProgram window(sheet.ProcessId());
    EXPECT_EQ(window.Path(), Notepad()[1]);
    window.Click(IDCANCEL);
    window.WaitUntilClosed();
    selection.Click(IDCANCEL);
    selection.WaitUntilClosed();
    editor.ExpectPrograms({});
    editor.CloseWith(IDOK);
    ExpectStored(StoredProfiles(), 0, {});
    Close(sheet, IDCANCEL);
}

}  // namespace
}  // namespace kvn::end_to_end

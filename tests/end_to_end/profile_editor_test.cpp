// Profiles: added, copied, renamed, deleted and used, and what page, profile file and registry say of them.
#include "resources/resource.h"
#include "tests/end_to_end/gesture_driver.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_story.h"
#include "tests/end_to_end/waiting.h"

namespace kvn::end_to_end {
namespace {

constexpr int kMaximizeWindow = 7;
constexpr int kGestureFunction = 36;

using Names = std::vector<std::string>;

class EditingProfiles : public ProfileStory {
protected:
    std::vector<ProfileText> StoredProfiles() const override { return {withGesture}; }

    const ProfileText withGesture{"Default", {{"tbutton", "36"}}, {{"UR", "6", "close", ""}}};
};

TEST_F(EditingProfiles, WholeSessionLeavesPageFileAndRegistryInAgreement) {
    StartNotepad();
    StartService();
    // The file's text is in the code page of the user.
    ProfileText games{"Spiele f\xFCr zwei", {}, {}, {InFile(Notepad())}};
    const ProfileText drawing{"Drawing", {}, {}, {InFile(Easel())}};
    ProfileText presenting = withGesture;
    presenting.name = "Presenting";
    const Names names{"Default", "Drawing", "Spiele f\xC3\xBCr zwei", "Presenting"};
    RegistryValues registry;
    {
        const Sheet sheet = OpenSheet();
        const ProfileEditor editor = OpenEditor(sheet);
        editor.ExpectProfiles({"Default"});
        EnterName(editor, IDC_PROFILES_ADD, L"Drawing");
        EnterName(editor, IDC_PROFILES_ADD, L"Games");
        EnterName(editor, IDC_PROFILES_ADD, L"For a day");
        editor.ExpectProfiles({"Default", "Drawing", "Games", "For a day"});
        EXPECT_TRUE(editor.SelectedProfiles().empty());

        editor.Select(1);
        AddFromStartMenu(editor, Easel());
        editor.ExpectPrograms({Easel()});
        editor.Select(2);
        editor.ExpectPrograms({});
        AddFromWindow(editor, Notepad());
        editor.ExpectPrograms({Notepad()});

        editor.Select(0);
        EnterName(editor, IDC_PROFILES_COPY, L"Presenting");
        editor.Select(2);
        EnterName(editor, IDC_PROFILES_RENAME, L"Spiele f\u00FCr zwei");
        editor.Select(3);
        DeleteSelected(editor);
        editor.ExpectProfiles(names);
        ExpectPage(sheet, {"Default"}, L"Default");
        ExpectStored({withGesture}, 0, registry);

        editor.CloseWith(IDOK);
        ExpectPage(sheet, names, L"Default");
        ExpectStored({withGesture, drawing, games, presenting}, 0, registry);

        sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 2);
        WaitFor("the chosen profile", [&] { return sheet.Chosen(IDC_PANE_CENTER) == 9; });
        sheet.ChooseByMouse(IDC_PANE_BUTTON5, kMaximizeWindow);
        Apply(sheet);
        games.elements["button5"] = "7";
        registry = {{"BindKeyCenter", "9"},
                    {"BindKeyPlus", "7"},
                    {"Gesture", TextList({})},
                    {"ProfileApp", InRegistry({Notepad()})}};
        ExpectPage(sheet, names, L"Spiele f\u00FCr zwei");
        ExpectStored({withGesture, drawing, games, presenting}, 2, registry);
        Close(sheet, IDOK);
    }
    ExpectStored({withGesture, drawing, games, presenting}, 2, registry);

    const Sheet sheet = OpenSheet();
    ExpectPage(sheet, names, L"Spiele f\u00FCr zwei");
    EXPECT_EQ(sheet.Chosen(IDC_PANE_BUTTON5), kMaximizeWindow);
    const ProfileEditor editor = OpenEditor(sheet);
    editor.ExpectProfiles(names);
    const std::vector<std::vector<ProgramRow>> programs{{}, {Easel()}, {Notepad()}, {}};
    for (std::size_t profile = 0; profile < programs.size(); ++profile) {
        editor.Select(static_cast<int>(profile));
        editor.ExpectPrograms(programs[profile]);
    }
    editor.CloseWith(IDOK);
    ExpectStored({withGesture, drawing, games, presenting}, 2, registry);

    sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 3);
    WaitFor("the copy", [&] { return sheet.Chosen(IDC_PANE_CENTER) == kGestureFunction; });
    EXPECT_EQ(GestureList(sheet).Rows(), (std::vector<GestureRow>{{"UR", "Close the window", "close"}}));
    Apply(sheet);
    registry = {{"BindKeyCenter", "36"},
                {"BindKeyPlus", "4"},
                {"Gesture", TextList({L"UR\t6\tclose\t"})},
                {"ProfileApp", TextList({})}};
    ExpectStored({withGesture, drawing, games, presenting}, 3, registry);
    Close(sheet, IDCANCEL);
}

TEST_F(EditingProfiles, RefusedNamesChangeNothing) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditor(sheet);
    EnterName(editor, IDC_PROFILES_ADD, L"Default");
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Profile name is already in use.");
    EnterName(editor, IDC_PROFILES_ADD, L"");
    EnterName(editor, IDC_PROFILES_ADD, L"default");
    editor.ExpectProfiles({"Default", "default"});
    editor.Select(0);
    editor.Click(IDC_PROFILES_RENAME);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Cannot change the default profile name.");
    editor.Click(IDC_PROFILES_DELETE);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDYES), L"Are you sure you want to delete?");
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDOK), L"Cannot delete the default profile.");
    editor.ExpectProfiles({"Default", "default"});
    editor.CloseWith(IDOK);
    ExpectStored({withGesture, {"default"}}, 0, {});
    Close(sheet, IDCANCEL);
}

class StoredProfilesEdited : public ProfileStory {
protected:
    std::vector<ProfileText> StoredProfiles() const override { return {{}, painting, racing}; }

    const ProfileText painting{"Painting", {{"button4", "7"}}, {}, {InFile(Easel()), InFile(Notepad())}};
    const ProfileText racing{"Racing", {}, {}, {InFile(Racing())}};
};

TEST_F(StoredProfilesEdited, CancelDropsEverythingButTheSelectionThatADeletionMoved) {
    WriteFileBytes(ProfileFile(), ProfileFileText(StoredProfiles(), 2));
    const Sheet sheet = OpenSheetWithService();
    ExpectPage(sheet, {"Default", "Painting", "Racing"}, L"Racing");
    const ProfileEditor editor = OpenEditor(sheet);
    EnterName(editor, IDC_PROFILES_ADD, L"New");
    editor.Select(1);
    EnterName(editor, IDC_PROFILES_RENAME, L"Drawing");
    EnterName(editor, IDC_PROFILES_COPY, L"Copied");
    editor.ExpectProfiles({"Default", "Drawing", "Racing", "New", "Copied"});
    ExpectPage(sheet, {"Default", "Painting", "Racing"}, L"Racing");
    editor.SelectUpTo(2, 2);
    WaitFor("Copy to be disabled", [&] { return !editor.IsEnabled(IDC_PROFILES_COPY); });
    DeleteSelected(editor);
    editor.ExpectProfiles({"Default", "New", "Copied"});
    WaitFor("the first profile on the page", [&] { return sheet.ChosenText(IDC_PAGE_PROFILE) == L"Default"; });
    editor.CloseWith(IDCANCEL);

    ExpectPage(sheet, {"Default", "Painting", "Racing"}, L"Default");
    ExpectStored(StoredProfiles(), 2, {});
    Apply(sheet);
    ExpectStored(StoredProfiles(), 0, {{"ProfileApp", TextList({})}});
    Close(sheet, IDOK);
}

TEST_F(StoredProfilesEdited, ARenamedAndACopiedProfileAreEachWrittenWithOk) {
    const Sheet sheet = OpenSheetWithService();
    ProfileText renamed = painting;
    renamed.name = "Drawing";
    {
        const ProfileEditor editor = OpenEditor(sheet);
        editor.Select(1);
        EnterName(editor, IDC_PROFILES_RENAME, L"Drawing");
        editor.ExpectProfiles({"Default", "Drawing", "Racing"});
        editor.CloseWith(IDOK);
    }
    ExpectStored({{}, renamed, racing}, 0, {});
    const ProfileEditor editor = OpenEditor(sheet);
    editor.Select(1);
    editor.ExpectPrograms({Easel(), Notepad()});
    EnterName(editor, IDC_PROFILES_COPY, L"Sketching");
    editor.ExpectProfiles({"Default", "Drawing", "Racing", "Sketching"});
    editor.Select(3);
    editor.ExpectPrograms({});
    editor.CloseWith(IDOK);
    ProfileText copied = renamed;
    copied.name = "Sketching";
    copied.programs.clear();
    ExpectPage(sheet, {"Default", "Drawing", "Racing", "Sketching"}, L"Default");
    ExpectStored({{}, renamed, racing, copied}, 0, {});
    Close(sheet, IDCANCEL);
}

TEST_F(StoredProfilesEdited, EscapeLeavesTheEditorAndTheNameDialogWithoutAChange) {
    const Sheet sheet = OpenSheetWithService();
    const ProfileEditor editor = OpenEditor(sheet);
    editor.Select(2);
    editor.Click(IDC_PROFILES_RENAME);
    const NameDialog name(sheet.ProcessId(), L"Change profile name");
    EXPECT_EQ(name.Name(), "Racing");
    name.Type(L"Driving");
    name.CloseWith(VK_ESCAPE);
    editor.ExpectProfiles({"Default", "Painting", "Racing"});
    PressKey(VK_ESCAPE);
    editor.WaitUntilClosed();
    ExpectPage(sheet, {"Default", "Painting", "Racing"}, L"Default");
    ExpectStored(StoredProfiles(), 0, {});
    Close(sheet, IDCANCEL);
    EndService();
    EXPECT_EQ(MessagesToService(), std::vector<std::string>{kProbe});
}

TEST_F(StoredProfilesEdited, RemovedProgramIsGoneFromTheFileAtOnceAndFromTheRegistryWithApply) {
    StartService();
    {
        const Sheet sheet = OpenSheet();
        sheet.ChooseEntryByMouse(IDC_PAGE_PROFILE, 1);
        WaitFor("the chosen profile", [&] { return sheet.Chosen(IDC_PANE_BUTTON4) == kMaximizeWindow; });
        Apply(sheet);
        Close(sheet, IDOK);
    }
    const RegistryValues before{{"BindKeyMinus", "7"}, {"ProfileApp", InRegistry({Easel(), Notepad()})}};
    ExpectStored(StoredProfiles(), 1, before);

    const Sheet sheet = OpenSheet();
    const ProfileEditor editor = OpenEditor(sheet);
    editor.Select(1);
    editor.ExpectPrograms({Easel(), Notepad()});
    editor.SelectProgram(0);
    WaitFor("Delete", [&] { return editor.IsEnabled(IDC_PROFILES_DELETE_PROGRAM); });
    editor.Click(IDC_PROFILES_DELETE_PROGRAM);
    EXPECT_EQ(AnswerMessage(sheet.ProcessId(), IDYES), L"Are you sure you want to delete?");
    editor.ExpectPrograms({Notepad()});
    editor.CloseWith(IDOK);
    ProfileText changed = painting;
    changed.programs.erase(changed.programs.begin());
    ExpectStored({{}, changed, racing}, 1, before);
    Apply(sheet);
    ExpectStored({{}, changed, racing}, 1, {{"BindKeyMinus", "7"}, {"ProfileApp", InRegistry({Notepad()})}});
    Close(sheet, IDOK);
}

}  // namespace
}  // namespace kvn::end_to_end

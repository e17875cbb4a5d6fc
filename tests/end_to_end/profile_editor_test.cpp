// Profiles: added, copied, renamed, deleted and used, and what page, profile file and registry say of them.
#include "resources/resource.h"
#include "tests/end_to_end/gesture_driver.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_story.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/function_codes.h"

namespace kvn::end_to_end {
namespace {

using enum test::Function;

using Names = std::vector<std::string>;

class EditingProfilesTest : public ProfileStory {
protected:
    std::vector<ProfileText> StoredProfiles() const override { return {withGesture}; }

    const ProfileText withGesture{"Default", {{"tbutton", "36"}}, {{"UR", "6", "close", ""}}};
};

TEST_F(EditingProfilesTest, WholeSessionLeavesPageFileAndRegistryInAgreement) {
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
        sheet.ChooseByMouse(IDC_PANE_BUTTON5, kMaximize);
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
    EXPECT_EQ(sheet.Chosen(IDC_PANE_BUTTON5), kMaximize);
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
    WaitFor("the copy", [&] { return sheet.Chosen(IDC_PANE_CENTER) == kGesture; });
    EXPECT_EQ(GestureList(sheet).Rows(), (std::vector<GestureRow>{{"UR", "Close the window", "close"}}));
    Apply(sheet);
    registry = {{"BindKeyCenter", "36"},
                {"BindKeyPlus", "4"},
                {"Gesture", TextList({L"UR\t6\tclose\t"})},
                {"ProfileApp", TextList({})}};
    ExpectStored({withGesture, drawing, games, presenting}, 3, registry);
    Close(sheet, IDCANCEL);
}

}  // namespace
}  // namespace kvn::end_to_end

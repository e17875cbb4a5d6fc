// Programs that are tied to profiles: from the Start menu, from a window and from a file; and when they are stored.
#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/profile_story.h"
#include "tests/end_to_end/story_waiting.h"

namespace kvn::end_to_end {
namespace {

class TyingProgramsTest : public ProfileStory {
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

TEST_F(TyingProgramsTest, ProgramsThatAreOnlyAddedAreSavedWithTheNextApply) {
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

}  // namespace
}  // namespace kvn::end_to_end

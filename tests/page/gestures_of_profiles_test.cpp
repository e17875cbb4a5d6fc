// The list of gestures and the profile editor: the list always shows the profile that the page's combo box shows.
#include <windows.h>

#include "tests/support/gesture_fixture.h"
#include "tests/support/profile_dialogs.h"

namespace kvn::test {
namespace {

using namespace std::string_literals;

class GesturesOfProfilesTest : public GestureTest {
protected:
    static std::string Profile(const std::string& name) {
        return GestureProfile({{"U", 3, name, ""}, {"R", 4, name, ""}}, name);
    }

    void OpenOn(int selected) {
        WriteProfiles({Profile("Default"), Profile("games"), Profile("work")}, selected);
        Open();
        ExpectShown(std::vector<std::wstring>{L"Default", L"games", L"work"}[static_cast<std::size_t>(selected)]);
    }
    // Deletes these profiles and closes the editor with this button.
    void DeleteProfiles(const std::vector<int>& rows, int button, bool isBrokenOff = false) const {
        PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
        const auto editor = ProfileEditorDialog::Await();
        sheet->Settle();
        editor.SelectProfiles(rows);
        editor.Command(IDC_PROFILES_DELETE);
        AnswerMessageBox("before a deletion", IDYES);
        if (isBrokenOff) AnswerMessageBox("about the default profile", IDOK);
        sheet->Settle();
        if (!isBrokenOff) ExpectShown(L"Default");
        editor.Close(button);
        EXPECT_TRUE(sheet->IsQuiet());
    }
    void ExpectShown(const std::wstring& profile) const {
        EXPECT_EQ(SelectedText(sheet->PageControl(IDC_PAGE_PROFILE)), profile);
        ASSERT_EQ(RowCount(), 2);
        EXPECT_EQ(Row(0), (RowTexts{L"U", L"Back (Internet Explorer)", profile}));
        EXPECT_EQ(Row(1), (RowTexts{L"R", L"Forward (Internet Explorer)", profile}));
        EXPECT_FALSE(IsButtonEnabled(IDC_GESTURES_EDIT));
        EXPECT_FALSE(IsButtonEnabled(IDC_GESTURES_DELETE));
    }
    // Deletes the second row and expects that only this profile has lost its gesture.
    void ExpectDeletionFrom(int profile, int profileCount) {
        SelectRow(1);
        Command(IDC_GESTURES_DELETE);
        AnswerMessageBox("before a deletion", IDYES);
        ApplySuccessfully();
        for (int each = 0; each < profileCount; ++each) {
            EXPECT_EQ(SavedGestures(each), each == profile ? 1 : 2) << each;
        }
    }

private:
    int SavedGestures(int profile) const {
        const std::string text = ReadFileText(ProfilePath());
        std::size_t begin = 0;
        for (int each = 0; each <= profile; ++each) begin = text.find("<profile>", begin) + 1;
        const std::size_t end = text.find("</profile>", begin);
        int count = 0;
        for (std::size_t at = begin; (at = text.find("<Gesture>", at)) < end; ++at) ++count;
        return count;
    }
};

TEST_F(GesturesOfProfilesTest, DeletingTheSelectedProfileShowsTheFirst) {
    OpenOn(1);
    DeleteProfiles({1}, IDOK);
    ExpectShown(L"Default");
    ExpectDeletionFrom(0, 2);
}

TEST_F(GesturesOfProfilesTest, DeletingAnotherProfileShowsTheFirst) {
    OpenOn(1);
    DeleteProfiles({2}, IDOK);
    ExpectShown(L"Default");
    ExpectDeletionFrom(0, 2);
}

TEST_F(GesturesOfProfilesTest, CancelLeavesTheFirstShown) {
    OpenOn(1);
    DeleteProfiles({1}, IDCANCEL);
    ExpectShown(L"Default");
    ExpectDeletionFrom(0, 3);
}

TEST_F(GesturesOfProfilesTest, ADeletionThatIsBrokenOffShowsWhatTheSelectionThenIs) {
    WriteProfiles({Profile("a"), Profile("Default"), Profile("games")}, 1);
    Open();
    ExpectShown(L"Default");
    DeleteProfiles({0, 1}, IDOK, true);
    ExpectShown(L"games");
    ExpectDeletionFrom(1, 2);
}

TEST_F(GesturesOfProfilesTest, EditAndAddActOnTheShownProfile) {
    OpenOn(1);
    DeleteProfiles({1}, IDOK);
    const HWND edited = EditRow(1);
    EXPECT_EQ(Stroke(edited), L"R");
    TypeMemo(edited, L"new");
    CloseEditor(edited, IDOK);
    const HWND added = OpenEditor();
    Record(added, "D");
    ChooseFunction(added, 5);
    CloseEditor(added, IDOK);
    ApplySuccessfully();
    EXPECT_EQ(StoredGestures(), StoredList(L"U\t3\tDefault\t\0R\t4\tnew\t\0D\t5\t\t\0\0"s));
}

}  // namespace
}  // namespace kvn::test

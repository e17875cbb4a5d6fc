#include "tests/support/profile_editor_fixture.h"

namespace kvn::test {

std::string ProfileWithPrograms(const std::string& name,
                                const std::vector<std::pair<std::string, std::string>>& programs) {
    std::vector<ProfileElement> elements;
    for (const auto& program : programs) {
        elements.emplace_back("Application", "<name>" + program.first + "</name><path>" + program.second + "</path>");
    }
    return ProfileText(name, elements);
}

std::vector<std::string> NumberedProfiles(int count) {
    std::vector<std::string> profiles{ProfileText("Default")};
    for (int i = 1; i < count; ++i) profiles.push_back(ProfileText("p" + std::to_string(i)));
    return profiles;
}

void ProfileEditorTest::OpenEditor(const std::vector<std::string>& profiles, int selected) {
    WriteProfiles(profiles, selected);
    Open();
    ReopenEditor();
}

void ProfileEditorTest::ReopenEditor() {
    PostMessageW(sheet->PageControl(IDC_PAGE_EDIT_PROFILE), BM_CLICK, 0, 0);
    editor = ProfileEditorDialog::Await();
    sheet->Settle();
}

void ProfileEditorTest::CloseEditor(int button) {
    editor->Close(button);
    EXPECT_TRUE(sheet->IsQuiet());
}

void ProfileEditorTest::Press(int button) const {
    editor->Press(button);
    sheet->Settle();
}

void ProfileEditorTest::Command(int button) const {
    editor->Command(button);
    sheet->Settle();
}

void ProfileEditorTest::ExpectRefusal(int button, const std::wstring& text) const {
    Command(button);
    const MessageBoxSeen seen = AnswerMessageBox("of a refusal", IDOK);
    ExpectWarning(seen, text);
    EXPECT_EQ(seen.owner, editor->Window());
    EXPECT_TRUE(IsQuiet());
}

void ProfileEditorTest::ExpectSilence(int button) const {
    Command(button);
    EXPECT_TRUE(IsQuiet());
}

void ProfileEditorTest::CommandAndAnswer(int button, int answer) const {
    Command(button);
    const MessageBoxSeen seen = AnswerMessageBox("before a deletion", answer);
    EXPECT_EQ(seen.caption, kCaption);
    EXPECT_EQ(seen.text, L"Are you sure you want to delete?");
    EXPECT_EQ(seen.icon, static_cast<UINT>(MB_ICONEXCLAMATION));
    EXPECT_EQ(seen.buttons, (std::vector<int>{IDYES, IDNO}));
    EXPECT_EQ(seen.owner, editor->Window());
    sheet->Settle();
}

void ProfileEditorTest::Name(int button, const std::wstring& name) const {
    Command(button);
    const HWND dialog = AwaitNameDialog();
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), editor->Window());
    sheet->Settle();
    EnterName(dialog, name);
    CloseNameDialog(dialog, IDOK);
    sheet->Settle();
}

bool ProfileEditorTest::IsQuiet() const {
    sheet->Settle();
    return OpenMessageBox() == nullptr && OpenNameDialog() == nullptr && editor->IsOpen() &&
           IsWindowEnabled(editor->Window()) != FALSE;
}

std::vector<std::wstring> ProfileEditorTest::ComboProfiles() const {
    std::vector<std::wstring> names;
    for (const ComboEntry& entry : EntriesOf(sheet->PageControl(IDC_PAGE_PROFILE))) names.push_back(entry.text);
    return names;
}

int ProfileEditorTest::ComboSelection() const {
    return SelectedIndex(sheet->PageControl(IDC_PAGE_PROFILE));
}

std::vector<std::string> ProfileEditorTest::SavedNames() const {
    std::vector<std::string> names;
    const std::string saved = Saved();
    for (int i = 0; ElementIn(saved, i, "profname") != "(none)"; ++i) {
        names.push_back(ElementIn(saved, i, "profname"));
    }
    return names;
}

std::vector<std::string> ProfileEditorTest::SavedPaths(int profile) const {
    const std::string saved = Saved();
    std::size_t begin = 0;
    for (int i = 0; i <= profile; ++i) begin = saved.find("<profile>", begin + 1);
    const std::size_t end = saved.find("</profile>", begin);
    std::vector<std::string> paths;
    constexpr std::size_t kTagLength = 6;  // <path>
    for (std::size_t at = saved.find("<path>", begin); at < end; at = saved.find("<path>", at + 1)) {
        paths.push_back(saved.substr(at + kTagLength, saved.find("</path>", at) - at - kTagLength));
    }
    return paths;
}

}  // namespace kvn::test

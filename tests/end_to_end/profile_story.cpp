#include "tests/end_to_end/profile_story.h"

#include <windows.h>

#include <array>
#include <map>

#include "resources/resource.h"
#include "tests/end_to_end/combo_driver.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/combo_contents.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

const std::map<int, std::wstring> kNameTitles{{IDC_PROFILES_ADD, L"Add profile"},
                                              {IDC_PROFILES_RENAME, L"Change profile name"},
                                              {IDC_PROFILES_COPY, L"Copy profile"}};

std::wstring Wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

ProgramSelection OpenSelection(const ProfileEditor& editor) {
    editor.Click(IDC_PROFILES_ADD_PROGRAM);
    return ProgramSelection(editor.ProcessId());
}

}  // namespace

void ProfileStory::SetUp() {
    EndToEndTest::SetUp();
    WriteFileBytes(ProfileFile(), ProfileFileText(StoredProfiles()));
    for (const ProgramRow& program : {Racing(), Easel()}) shortcuts.Add(Wide(program[0]), Wide(program[1]));
}

std::string ProfileStory::FileInWindowsFolder(const std::string& name) {
    std::array<wchar_t, MAX_PATH> folder{};
    GetWindowsDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return test::Narrow(folder.data()) + '\\' + name;
}

void ProfileStory::StartNotepad() const {
    const Process notepad = StartProgram(Wide(Notepad()[1]));
    WaitFor("a window of notepad", [&] {
        return FindTopLevelWindowOf(notepad.Id(), [](HWND window) {
            return IsWindowVisible(window) && !TitleOf(window).empty() && GetForegroundWindow() == window;
        });
    });
}

ProfileEditor ProfileStory::OpenEditor(const Sheet& sheet) {
    sheet.Click(IDC_PAGE_EDIT_PROFILE);
    return ProfileEditor(sheet.ProcessId());
}

void ProfileStory::EnterName(const ProfileEditor& editor, int button, const std::wstring& name) {
    editor.Click(button);
    const NameDialog dialog(editor.ProcessId(), kNameTitles.at(button));
    dialog.Type(name);
    dialog.CloseWith(VK_RETURN);
}

void ProfileStory::DeleteSelected(const ProfileEditor& editor) {
    editor.Click(IDC_PROFILES_DELETE);
    EXPECT_EQ(AnswerMessage(editor.ProcessId(), IDYES), L"Are you sure you want to delete?");
}

void ProfileStory::AddFromStartMenu(const ProfileEditor& editor, const ProgramRow& program) {
    const ProgramSelection selection = OpenSelection(editor);
    selection.Pick(selection.RowOf(program));
    selection.Click(IDOK);
    selection.WaitUntilClosed();
}

void ProfileStory::AddFromWindow(const ProfileEditor& editor, const ProgramRow& expected) {
    const ProgramSelection selection = OpenSelection(editor);
    selection.Click(IDC_PROGRAMS_SELECT_WINDOW);
    const WindowProgram window(editor.ProcessId());
    EXPECT_EQ(window.Path(), expected[1]);
    window.Click(IDOK);
    window.WaitUntilClosed();
    selection.WaitUntilClosed();
}

void ProfileStory::AddFromFile(const ProfileEditor& editor, const ProgramRow& program) {
    const ProgramSelection selection = OpenSelection(editor);
    selection.Click(IDC_PROGRAMS_REFERENCE);
    OpenFileByPath(editor.ProcessId(), Wide(program[1]));
    selection.WaitUntilClosed();
}

void ProfileStory::ExpectPage(const Sheet& sheet, const std::vector<std::string>& names, const std::wstring& selected) {
    std::vector<std::string> offered;
    for (const std::wstring& text : test::EntryTextsOf(sheet.Control(IDC_PAGE_PROFILE))) {
        offered.push_back(test::Narrow(text));
    }
    EXPECT_EQ(offered, names);
    EXPECT_EQ(sheet.ChosenText(IDC_PAGE_PROFILE), selected);
}

void ProfileStory::ExpectStored(const std::vector<ProfileText>& profiles, int selected,
                                const RegistryValues& registry) {
    EXPECT_EQ(ReadFileBytes(ProfileFile()), ProfileFileText(profiles, selected));
    EXPECT_EQ(ModelValues(), registry);
}

void ProfileStory::Apply(const Sheet& sheet) {
    WaitFor("a change to apply", [&] { return sheet.CanApply(); });
    sheet.Apply();
}

void ProfileStory::Close(const Sheet& sheet, int button) const {
    sheet.Close(button);
    EXPECT_EQ(HostExitCode(), 0U);
}

std::string ProfileStory::InRegistry(const std::vector<ProgramRow>& programs) {
    std::vector<std::wstring> texts;
    for (const ProgramRow& program : programs) texts.push_back(Wide(program[0]) + L'\t' + Wide(program[1]));
    return TextList(texts);
}

}  // namespace kvn::end_to_end

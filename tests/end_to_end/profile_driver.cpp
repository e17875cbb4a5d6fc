#include "tests/end_to_end/profile_driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "resources/resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kEditClass[] = L"Edit";

template <typename Row>
void ExpectRows(const std::string& what, const std::function<std::vector<Row>()>& rows,
                const std::vector<Row>& expected) {
    try {
        WaitFor(what, [&] { return rows() == expected; });
    } catch (const test::NeverHappened&) {
        // The comparison below says more.
    }
    EXPECT_EQ(rows(), expected) << what;
}

}  // namespace

ProfileEditor::ProfileEditor(DWORD hostProcessId)
    : Dialog(hostProcessId, L"Edit Profile"),
      profiles(Control(IDC_PROFILES_LIST)),
      programs(Control(IDC_PROFILES_PROGRAMS)) {
    WaitForFocus(IDC_PROFILES_LIST);
}

std::vector<std::string> ProfileEditor::Profiles() const {
    std::vector<std::string> names;
    for (const auto& row : profiles.Rows<1>()) names.push_back(row[0]);
    return names;
}

void ProfileEditor::ExpectProfiles(const std::vector<std::string>& names) const {
    ExpectRows<std::string>(
        "the profiles", [this] { return Profiles(); }, names);
}

void ProfileEditor::ExpectPrograms(const std::vector<ProgramRow>& rows) const {
    ExpectRows<ProgramRow>(
        "the programs", [this] { return Programs(); }, rows);
}

void ProfileEditor::CloseWith(int button) const {
    Click(button);
    WaitUntilClosed();
}

NameDialog::NameDialog(DWORD hostProcessId, const std::wstring& title) : Dialog(hostProcessId, title) {
    WaitForFocus(IDC_PROFILE_NAME);
}

std::string NameDialog::Name() const {
    return test::Narrow(TextOf(Control(IDC_PROFILE_NAME)));
}

void NameDialog::Type(const std::wstring& name) const {
    TypeText(name);
    WaitFor("the name " + test::Narrow(name), [&] { return Name() == test::Narrow(name); });
}

void NameDialog::CloseWith(WORD key) const {
    PressKey(key);
    WaitUntilClosed();
}

ProgramSelection::ProgramSelection(DWORD hostProcessId)
    : Dialog(hostProcessId, L"Select allocation program"), programs(Control(IDC_PROGRAMS_LIST)) {
    WaitForFocus(IDC_PROGRAMS_LIST);
}

int ProgramSelection::RowOf(const ProgramRow& program) const {
    const std::vector<ProgramRow> rows = Programs();
    if (std::count(rows.begin(), rows.end(), program) != 1) {
        throw StoryError(program[0] + " with " + program[1] + " is not listed exactly once");
    }
    return static_cast<int>(std::find(rows.begin(), rows.end(), program) - rows.begin());
}

void ProgramSelection::Pick(int row) const {
    programs.Select(row);
    // The dialog reads the cursor when the button is released. It handles the key after that.
    PressKey(VK_TAB);
    WaitForFocus(IDC_PROGRAMS_SELECT_WINDOW);
}

std::string WindowProgram::Path() const {
    return test::Narrow(TextOf(Control(IDC_PROGRAM_PATH)));
}

void OpenFileByPath(DWORD hostProcessId, const std::wstring& path) {
    const Dialog dialog(hostProcessId, L"Open file");
    const HWND field = WaitFor("the field for a file", [&] {
        const HWND focus = FocusOf(dialog.Window());
        return focus != nullptr && ClassOf(focus) == kEditClass ? focus : nullptr;
    });
    TypeText(path);
    WaitFor("the path", [&] { return TextOf(field) == path; });
    PressKey(VK_RETURN);
    dialog.WaitUntilClosed();
}

}  // namespace kvn::end_to_end

// The dialogs that edit profiles, used as a user does: "Edit Profile", the one for a profile's name, and those in which
// a program is chosen.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "tests/end_to_end/list_driver.h"
#include "tests/end_to_end/sheet_driver.h"

namespace kvn::end_to_end {

// Name and path of a row as the lists show them.
using ProgramRow = std::array<std::string, 2>;

// The open dialog "Edit Profile".
class ProfileEditor : public Dialog {
public:
    explicit ProfileEditor(DWORD hostProcessId);

    std::vector<std::string> Profiles() const;
    std::vector<ProgramRow> Programs() const { return programs.Rows<2>(); }
    // Wait until the list shows these rows.
    void ExpectProfiles(const std::vector<std::string>& names) const;
    void ExpectPrograms(const std::vector<ProgramRow>& rows) const;
    bool IsEnabled(int button) const { return IsWindowEnabled(Control(button)) != FALSE; }

    void Select(int profile) const { profiles.Select(profile); }
    void SelectUpTo(int profile, std::size_t selectedCount) const { profiles.SelectUpTo(profile, selectedCount); }
    void SelectProgram(int program) const { programs.Select(program); }
    std::vector<int> SelectedProfiles() const { return profiles.SelectedRows(); }

    // Clicks OK or Cancel and waits for the end.
    void CloseWith(int button) const;

private:
    ListDriver profiles;
    ListDriver programs;
};

// The open dialog for a profile's name, by its title.
class NameDialog : public Dialog {
public:
    NameDialog(DWORD hostProcessId, const std::wstring& title);

    std::string Name() const;
    // Replaces the name with this one.
    void Type(const std::wstring& name) const;
    // Presses Enter or Esc and waits for the end.
    void CloseWith(WORD key) const;
};

// The open dialog "Select allocation program".
class ProgramSelection : public Dialog {
public:
    explicit ProgramSelection(DWORD hostProcessId);

    std::vector<ProgramRow> Programs() const { return programs.Rows<2>(); }
    // The row of a program; fails the test if it is not listed exactly once.
    int RowOf(const ProgramRow& program) const;
    // Clicks the row. When the call returns, the dialog has handled the click.
    void Pick(int row) const;
    std::vector<int> SelectedRows() const { return programs.SelectedRows(); }

private:
    ListDriver programs;
};

// The open dialog "Register allocation program".
class WindowProgram : public Dialog {
public:
    explicit WindowProgram(DWORD hostProcessId) : Dialog(hostProcessId, L"Register allocation program") {}

    std::string Path() const;
};

// Enters a path in the system's dialog "Open file" by keys, and waits for its end.
void OpenFileByPath(DWORD hostProcessId, const std::wstring& path);

}  // namespace kvn::end_to_end

// The open dialog "Edit Profile" and the one for a profile's name, used and read from the test's thread.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/support/list_contents.h"

namespace kvn::test {

struct ProgramRow {
    std::wstring name;
    std::wstring path;
    int image = -1;

    friend bool operator==(const ProgramRow&, const ProgramRow&) = default;
};

class ProfileEditorDialog {
public:
    // Waits for the dialog.
    static ProfileEditorDialog Await();

    HWND Window() const { return dialog; }
    HWND Control(int control) const { return GetDlgItem(dialog, control); }
    bool IsOpen() const { return IsWindow(dialog) != FALSE; }
    bool IsEnabled(int button) const { return IsWindowEnabled(Control(button)) != FALSE; }

    std::vector<std::wstring> Profiles() const { return ColumnTexts(Control(IDC_PROFILES_LIST), 0); }
    std::vector<ProgramRow> Programs() const;
    // Only the paths.
    std::vector<std::wstring> ProgramPaths() const { return ColumnTexts(Control(IDC_PROFILES_PROGRAMS), 1); }
    std::vector<int> SelectedRows(int list) const { return SelectedRowsOf(Control(list)); }

    // Selects these rows and no others.
    void SelectRows(int list, const std::vector<int>& rows) const { test::SelectRows(Control(list), rows); }
    void SelectProfiles(const std::vector<int>& rows) const { SelectRows(IDC_PROFILES_LIST, rows); }
    void SelectPrograms(const std::vector<int>& rows) const { SelectRows(IDC_PROFILES_PROGRAMS, rows); }

    // Clicks the button; a disabled one does not react. Does not wait.
    void Press(int button) const { PostMessageW(Control(button), BM_CLICK, 0, 0); }
    // Sends the button's command to the dialog, in any state of the button. Does not wait.
    void Command(int button) const { PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0); }
    // Clicks the button and waits until the dialog has closed.
    void Close(int button) const;

private:
    explicit ProfileEditorDialog(HWND window) : dialog(window) {}

    HWND dialog;
};

// Waits for the dialog that asks for a name.
HWND AwaitNameDialog();
// Null if it is not open.
HWND OpenNameDialog();
// Puts the name into the dialog's field.
void EnterName(HWND nameDialog, const std::wstring& name);
// Clicks the button and waits until the dialog has closed.
void CloseNameDialog(HWND nameDialog, int button);

}  // namespace kvn::test

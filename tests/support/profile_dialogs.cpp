#include "tests/support/profile_dialogs.h"

#include "tests/support/list_contents.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

HWND FindDialogWith(int control) {
    return FindTopLevelWindow([=](HWND window) {
        return IsWindowVisible(window) && ClassOf(window) == kDialogClass && GetDlgItem(window, control) != nullptr;
    });
}

void PressAndAwaitEnd(HWND dialog, int button, const std::string& name) {
    PostMessageW(GetDlgItem(dialog, button), BM_CLICK, 0, 0);
    Await("the end of " + name, [=] { return !IsWindow(dialog); });
}

}  // namespace

ProfileEditorDialog ProfileEditorDialog::Await() {
    return ProfileEditorDialog(test::Await("the profile editor", [] { return FindDialogWith(IDC_PROFILES_RENAME); }));
}

void ProfileEditorDialog::Close(int button) const {
    PressAndAwaitEnd(dialog, button, "the profile editor");
}

std::vector<ProgramRow> ProfileEditorDialog::Programs() const {
    const HWND list = Control(IDC_PROFILES_PROGRAMS);
    std::vector<ProgramRow> rows;
    for (int row = 0; row < RowCountOf(list); ++row) {
        rows.push_back({CellText(list, row, 0), CellText(list, row, 1), ImageOfRow(list, row)});
    }
    return rows;
}

HWND OpenNameDialog() {
    return FindDialogWith(IDC_PROFILE_NAME);
}

HWND AwaitNameDialog() {
    return Await("the dialog for a profile's name", OpenNameDialog);
}

void EnterName(HWND nameDialog, const std::wstring& name) {
    SendDlgItemMessageW(nameDialog, IDC_PROFILE_NAME, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

void CloseNameDialog(HWND nameDialog, int button) {
    PressAndAwaitEnd(nameDialog, button, "the dialog for a profile's name");
}

}  // namespace kvn::test

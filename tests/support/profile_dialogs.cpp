#include "tests/support/profile_dialogs.h"

#include <commctrl.h>

#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::test {
namespace {

HWND FindDialogWith(int control) {
    return FindTopLevelWindow([=](HWND window) {
        return IsWindowVisible(window) && ClassOf(window) == L"#32770" && GetDlgItem(window, control) != nullptr;
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

int ProfileEditorDialog::RowCount(int list) const {
    return static_cast<int>(SendMessageW(Control(list), LVM_GETITEMCOUNT, 0, 0));
}

std::wstring ProfileEditorDialog::CellText(int list, int row, int column) const {
    wchar_t text[2048]{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 2048;
    SendMessageW(Control(list), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

std::vector<std::wstring> ProfileEditorDialog::Profiles() const {
    std::vector<std::wstring> names;
    for (int row = 0; row < RowCount(IDC_PROFILES_LIST); ++row) names.push_back(CellText(IDC_PROFILES_LIST, row, 0));
    return names;
}

std::vector<ProgramRow> ProfileEditorDialog::Programs() const {
    std::vector<ProgramRow> rows;
    for (int row = 0; row < RowCount(IDC_PROFILES_PROGRAMS); ++row) {
        LVITEMW item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageW(Control(IDC_PROFILES_PROGRAMS), LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        rows.push_back({CellText(IDC_PROFILES_PROGRAMS, row, 0), CellText(IDC_PROFILES_PROGRAMS, row, 1), item.iImage});
    }
    return rows;
}

std::vector<std::wstring> ProfileEditorDialog::ProgramPaths() const {
    std::vector<std::wstring> paths;
    for (const ProgramRow& row : Programs()) paths.push_back(row.path);
    return paths;
}

std::vector<int> ProfileEditorDialog::SelectedRows(int list) const {
    std::vector<int> rows;
    for (int row = 0; row < RowCount(list); ++row) {
        if (SendMessageW(Control(list), LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0) {
            rows.push_back(row);
        }
    }
    return rows;
}

void ProfileEditorDialog::SelectRows(int list, const std::vector<int>& rows) const {
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED;
    SendMessageW(Control(list), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    item.state = LVIS_SELECTED;
    for (const int row : rows) {
        SendMessageW(Control(list), LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    }
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

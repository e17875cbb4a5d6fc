#include "profiles/program_selection.h"

#include <commctrl.h>
#include <commdlg.h>

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "platform/boundary.h"
#include "platform/list_view.h"
#include "platform/system_library.h"
#include "platform/texts.h"
#include "profiles/program_icons.h"
#include "profiles/start_menu_programs.h"
#include "profiles/window_program_dialog.h"
#include "resources/resource.h"

namespace kvn::profiles {
namespace {

using model::ApplicationEntry;

constexpr INT_PTR kAccepted = 1;
constexpr INT_PTR kCancelled = 2;
constexpr std::size_t kFileBuffer = 260;
constexpr std::size_t kMaxCellText = 259;
constexpr int kNoRow = -1;

struct Column {
    UINT titleId;
    int width;  // pixels
};
constexpr std::array<Column, 2> kColumns{{{IDS_COLUMN_FILE_NAME, 300}, {IDS_COLUMN_LOCATION, 400}}};
constexpr int kNameColumn = 0;
constexpr int kPathColumn = 1;

constexpr wchar_t kCommonDialogs[] = L"comdlg32.dll";
constexpr wchar_t kFileFilter[] = L"exe(*.exe)\0*.exe\0All files(*.*)\0*.*\0";
constexpr wchar_t kProgramExtension[] = L"exe";

struct Selection {
    HINSTANCE module;  // whose texts are shown
    std::vector<ApplicationEntry>& chosen;
    std::optional<ProgramIcons> icons;  // as long as the dialog's window
};

// That of the open dialog, null while there is none.
Selection* selection = nullptr;

// The row of the last click, kNoRow for the empty space; lives as long as the module, from one opening to the next.
int lastClickedRow = 0;

HWND ListOf(HWND dialog) {
    return GetDlgItem(dialog, IDC_PROGRAMS_LIST);
}

// The text of a row, cut to 259 UTF-16 units but never in the middle of a surrogate pair.
std::wstring CellText(HWND list, int row, int column) {
    // One more than asked for: an uncut text may well end with half a pair, a cut one must not.
    std::array<wchar_t, kMaxCellText + 2> buffer{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = buffer.data();
    item.cchTextMax = static_cast<int>(buffer.size());
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    std::wstring text = buffer.data();
    if (text.size() <= kMaxCellText) return text;
    text.pop_back();
    if (IS_HIGH_SURROGATE(text.back())) text.pop_back();
    return text;
}

int NextSelectedRow(HWND list, int row) {
    return static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED));
}

void FillList(HWND dialog) {
    const HWND list = ListOf(dialog);
    std::vector<ApplicationEntry> programs;
    AppendStartMenuPrograms(dialog, programs);
    SendMessageW(list, LVM_SETITEMCOUNT, programs.size(), 0);
    int row = 0;
    for (const ApplicationEntry& program : programs) {
        platform::InsertListRow(list, row, program.name, selection->icons->IndexFor(program.path));
        platform::SetListText(list, row, kPathColumn, program.path);
        ++row;
    }
}

void OnInitDialog(HWND dialog) {
    const HWND list = ListOf(dialog);
    for (std::size_t i = 0; i < kColumns.size(); ++i) {
        platform::AddListColumn(list, static_cast<int>(i), platform::LoadText(selection->module, kColumns[i].titleId),
                                kColumns[i].width);
    }
    selection->icons.emplace();
    selection->icons->AttachTo(list);
    FillList(dialog);
}

void OnListClicked(HWND list) {
    LVHITTESTINFO hit{};
    GetCursorPos(&hit.pt);
    ScreenToClient(list, &hit.pt);
    SendMessageW(list, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    lastClickedRow = hit.iItem;
}

void OnOk(HWND dialog) {
    if (lastClickedRow == kNoRow) return;
    const HWND list = ListOf(dialog);
    for (int row = NextSelectedRow(list, kNoRow); row != kNoRow; row = NextSelectedRow(list, row)) {
        selection->chosen.push_back({CellText(list, row, kNameColumn), CellText(list, row, kPathColumn)});
    }
    EndDialog(dialog, kAccepted);
}

// False when the user cancels, and on every failure.
bool ShowOpenDialog(OPENFILENAMEW& request) {
    using platform::SystemFunction;
    const auto getOpenFileName = SystemFunction<decltype(GetOpenFileNameW)>(kCommonDialogs, "GetOpenFileNameW");
    const auto getError = SystemFunction<decltype(CommDlgExtendedError)>(kCommonDialogs, "CommDlgExtendedError");
    if (getOpenFileName == nullptr || getError == nullptr) return false;
    if (getOpenFileName(&request)) return true;
    getError();  // reading it is all that is done about it
    return false;
}

// The program file that the user opens; nothing on Cancel and on every failure.
std::optional<ApplicationEntry> AskForFile(HWND owner) {
    std::array<wchar_t, kFileBuffer> path{};
    std::array<wchar_t, kFileBuffer> title{};
    const std::wstring caption = platform::LoadText(selection->module, IDS_TITLE_OPEN_FILE);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.lpstrFilter = kFileFilter;
    request.lpstrFile = path.data();
    request.nMaxFile = static_cast<DWORD>(path.size());
    request.lpstrFileTitle = title.data();
    request.nMaxFileTitle = static_cast<DWORD>(title.size());
    request.lpstrTitle = caption.c_str();
    request.lpstrDefExt = kProgramExtension;
    request.Flags = OFN_FILEMUSTEXIST;
    if (ShowOpenDialog(request)) return ApplicationEntry{title.data(), path.data()};
    return std::nullopt;
}

void OnReference(HWND dialog) {
    std::optional<ApplicationEntry> file = AskForFile(dialog);
    if (!file) return;
    selection->icons->IndexFor(file->path);
    selection->chosen.push_back(*std::move(file));
    EndDialog(dialog, kAccepted);
}

void OnSelectWindow(HWND dialog) {
    ApplicationEntry program;
    if (!RunWindowProgramDialog(selection->module, dialog, program)) return;
    selection->chosen.push_back(std::move(program));
    EndDialog(dialog, kAccepted);
}

// Comes without WM_INITDIALOG when a control cannot be made.
void OnDestroy() {
    if (selection != nullptr) selection->icons.reset();
    selection = nullptr;
}

void OnCommand(HWND dialog, int control) {
    switch (control) {
        case IDOK:
            return OnOk(dialog);
        case IDC_PROGRAMS_REFERENCE:
            return OnReference(dialog);
        case IDC_PROGRAMS_SELECT_WINDOW:
            return OnSelectWindow(dialog);
        case IDCANCEL:
            EndDialog(dialog, kCancelled);
            return;
        default:
            return;
    }
}

BOOL HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            selection = reinterpret_cast<Selection*>(lParam);
            OnInitDialog(dialog);
            return TRUE;
        case WM_COMMAND:
            OnCommand(dialog, LOWORD(wParam));
            return TRUE;
        case WM_NOTIFY: {
            const auto* notification = reinterpret_cast<const NMHDR*>(lParam);
            if (notification->idFrom != IDC_PROGRAMS_LIST || notification->code != NM_CLICK) return FALSE;
            OnListClicked(notification->hwndFrom);
            return TRUE;
        }
        case WM_DESTROY:
            OnDestroy();
            return TRUE;
        default:
            return FALSE;
    }
}

INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    return platform::AtBoundary<INT_PTR>(FALSE, [&] { return HandleMessage(dialog, message, wParam, lParam); });
}

}  // namespace

bool RunProgramSelection(HINSTANCE module, HWND owner, std::vector<ApplicationEntry>& chosen) {
    Selection opened{module, chosen, std::nullopt};
    return DialogBoxParamW(module, MAKEINTRESOURCEW(IDD_SELECT_PROGRAM), owner, DialogProcedure,
                           reinterpret_cast<LPARAM>(&opened)) == kAccepted;
}

}  // namespace kvn::profiles

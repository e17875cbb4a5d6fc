#include "profiles/program_selection.h"

#include <commctrl.h>
#include <commdlg.h>

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "platform/list_view.h"
#include "platform/modal_dialog.h"
#include "platform/system_library.h"
#include "platform/texts.h"
#include "profiles/program_icons.h"
#include "profiles/start_menu_programs.h"
#include "profiles/window_program_dialog.h"
#include "resources/resource.h"

namespace kvn::profiles {
namespace {

using model::ApplicationEntry;

constexpr std::size_t kFileBuffer = 260;
constexpr int kMaxCellText = 259;
constexpr int kNoRow = -1;

constexpr std::array<platform::ListColumn, 2> kColumns{{{IDS_COLUMN_FILE_NAME, 300}, {IDS_COLUMN_LOCATION, 400}}};
constexpr int kNameColumn = 0;
constexpr int kPathColumn = 1;

constexpr wchar_t kCommonDialogs[] = L"comdlg32.dll";
constexpr wchar_t kFileFilter[] = L"exe(*.exe)\0*.exe\0All files(*.*)\0*.*\0";
constexpr wchar_t kProgramExtension[] = L"exe";

// The row of the last click, kNoRow for the empty space; remembered from one opening to the next:
// docs/kept-behaviour.md.
int lastClickedRow = 0;

// Restores the host program's current folder at the end. The dialog that opens files changes it, and Windows would keep
// the new folder in use for as long as the host runs.
class [[nodiscard]] KeptCurrentFolder {
public:
    KeptCurrentFolder() : folder(GetCurrentDirectoryW(0, nullptr), L'\0') {
        const DWORD length = GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data());
        folder.resize(length < folder.size() ? length : 0);
    }
    ~KeptCurrentFolder() {
        if (!folder.empty()) SetCurrentDirectoryW(folder.c_str());
    }
    KeptCurrentFolder(const KeptCurrentFolder&) = delete;
    KeptCurrentFolder& operator=(const KeptCurrentFolder&) = delete;

private:
    std::wstring folder;
};

// False if the user cancels, and on every failure.
bool ShowOpenDialog(OPENFILENAMEW& request) {
    using platform::SystemFunction;
    const auto getOpenFileName = SystemFunction<decltype(GetOpenFileNameW)>(kCommonDialogs, "GetOpenFileNameW");
    if (getOpenFileName == nullptr) return false;
    const KeptCurrentFolder folder;
    return getOpenFileName(&request) != FALSE;
}

class ProgramSelectionDialog final : public platform::ModalDialog {
public:
    std::optional<std::vector<ApplicationEntry>> Run(HINSTANCE module, HWND owner) {
        if (!RunModal(module, IDD_SELECT_PROGRAM, owner)) return std::nullopt;
        return std::move(chosen);
    }

private:
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnInitDialog();
    void OnCommand(int control);
    void OnListClicked() const;
    void OnOk();
    void OnReference();
    void OnSelectWindow();

    void FillList();
    // The program file that the user opens; nothing on Cancel and on every failure.
    std::optional<ApplicationEntry> AskForFile() const;
    // Ends the dialog with this program as its answer.
    void Choose(ApplicationEntry program);
    HWND List() const { return Control(IDC_PROGRAMS_LIST); }

    std::vector<ApplicationEntry> chosen;
    std::optional<ProgramIcons> icons;  // lives as long as the dialog's window
};

INT_PTR ProgramSelectionDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInitDialog();
            return TRUE;
        case WM_COMMAND:
            OnCommand(LOWORD(wParam));
            return TRUE;
        case WM_NOTIFY: {
            const auto* notification = reinterpret_cast<const NMHDR*>(lParam);
            if (notification->idFrom != IDC_PROGRAMS_LIST || notification->code != NM_CLICK) return FALSE;
            OnListClicked();
            return TRUE;
        }
        case WM_DESTROY:
            icons.reset();
            return TRUE;
        default:
            return FALSE;
    }
}

void ProgramSelectionDialog::OnInitDialog() {
    platform::AddListColumns(List(), Module(), kColumns);
    icons.emplace();
    icons->AttachTo(List());
    FillList();
}

void ProgramSelectionDialog::FillList() {
    const HWND list = List();
    std::vector<ApplicationEntry> programs;
    AppendStartMenuPrograms(Window(), programs);
    SendMessageW(list, LVM_SETITEMCOUNT, programs.size(), 0);
    int row = 0;
    for (const ApplicationEntry& program : programs)
        InsertProgramRow(list, row++, program, icons->Append(program.path));
}

void ProgramSelectionDialog::OnCommand(int control) {
    switch (control) {
        case IDOK:
            return OnOk();
        case IDC_PROGRAMS_REFERENCE:
            return OnReference();
        case IDC_PROGRAMS_SELECT_WINDOW:
            return OnSelectWindow();
        case IDCANCEL:
            return End(platform::DialogResult::Cancelled);
        default:
            return;
    }
}

void ProgramSelectionDialog::OnListClicked() const {
    LVHITTESTINFO hit{};
    GetCursorPos(&hit.pt);
    ScreenToClient(List(), &hit.pt);
    SendMessageW(List(), LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    lastClickedRow = hit.iItem;
}

void ProgramSelectionDialog::OnOk() {
    if (lastClickedRow == kNoRow) return;
    const HWND list = List();
    chosen.clear();  // an earlier press may have failed halfway
    for (const int row : platform::SelectedRows(list)) {
        chosen.push_back({platform::ListText(list, row, kNameColumn, kMaxCellText),
                          platform::ListText(list, row, kPathColumn, kMaxCellText)});
    }
    End(platform::DialogResult::Accepted);
}

std::optional<ApplicationEntry> ProgramSelectionDialog::AskForFile() const {
    std::array<wchar_t, kFileBuffer> path{};
    std::array<wchar_t, kFileBuffer> title{};
    const std::wstring caption = platform::LoadText(Module(), IDS_TITLE_OPEN_FILE);
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = Window();
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

void ProgramSelectionDialog::OnReference() {
    std::optional<ApplicationEntry> file = AskForFile();
    if (!file) return;
    icons->Append(file->path);
    Choose(*std::move(file));
}

void ProgramSelectionDialog::OnSelectWindow() {
    std::optional<ApplicationEntry> program = RunWindowProgramDialog(Module(), Window());
    if (program) Choose(*std::move(program));
}

void ProgramSelectionDialog::Choose(ApplicationEntry program) {
    chosen.push_back(std::move(program));
    End(platform::DialogResult::Accepted);
}

}  // namespace

std::optional<std::vector<ApplicationEntry>> RunProgramSelection(HINSTANCE module, HWND owner) {
    return ProgramSelectionDialog().Run(module, owner);
}

}  // namespace kvn::profiles

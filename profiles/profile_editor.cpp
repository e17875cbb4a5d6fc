#include "profiles/profile_editor.h"

#include <commctrl.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/profile_list.h"
#include "model/registry_access.h"
#include "model/settings_store.h"
#include "platform/boundary.h"
#include "platform/command_table.h"
#include "platform/dialog_control.h"
#include "platform/list_view.h"
#include "platform/modal_dialog.h"
#include "platform/paused_redraw.h"
#include "platform/raised_flag.h"
#include "platform/texts.h"
#include "profiles/edited_profiles.h"
#include "profiles/profile_name_dialog.h"
#include "profiles/program_list.h"
#include "resources/resource.h"

namespace kvn::profiles {
namespace {

using model::ApplicationEntry;

constexpr std::array<platform::ListColumn, 1> kProfileColumns{{{IDS_COLUMN_PROFILE, 380}}};

// Which buttons are enabled for how many selected profiles. Without a selection, none is.
struct ButtonRow {
    int button;
    bool withOne;
    bool withMany;
};
constexpr std::array<ButtonRow, 5> kButtons{{
    {IDC_PROFILES_DELETE, true, true},
    {IDC_PROFILES_RENAME, true, false},
    {IDC_PROFILES_COPY, true, false},
    {IDC_PROFILES_ADD_PROGRAM, true, false},
    {IDC_PROFILES_DELETE_PROGRAM, false, false},
}};

// One opening of the dialog.
class ProfileEditor final : public platform::ModalDialog {
public:
    explicit ProfileEditor(const ProfileEditorContext& lender)
        : context(lender), edited(lender.settings.profiles, Text(IDS_DEFAULT_PROFILE_NAME)) {}

    void Run() { RunModal(context.module, IDD_EDIT_PROFILE, context.page); }

private:
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnInitDialog();
    void OnNotify(const NMHDR& header);
    static const platform::CommandRow<ProfileEditor> kCommands[8];

    void OnAddProfile();
    void OnDeleteProfiles();
    void OnRenameProfile();
    void OnCopyProfile();
    void OnAddPrograms();
    void OnDeletePrograms();
    void OnOk();
    void OnCancel();

    bool DeleteSelectedProfiles();
    void OnProfilesSelected();
    void OnProgramsSelected();

    // The only selected profile; reports to the user if there is none or more than one.
    std::optional<std::size_t> AskForOneProfile() const;
    // The name that the user gives a profile; nothing if the user cancels.
    std::optional<std::wstring> AskForName(ProfileNameMode mode, std::wstring_view current = {}) const;
    bool RefuseTakenName(const std::wstring& name) const;

    void AddPrograms(std::size_t profile, const std::vector<ApplicationEntry>& chosen);

    void Warn(UINT textId) const { context.boxes.Warn(Window(), textId); }
    std::wstring Text(UINT textId) const { return platform::LoadText(context.module, textId); }

    const ProfileEditorContext& context;
    EditedProfiles edited;
    ProgramList programs;
    bool isDeleting = false;  // while profiles are being deleted
    HWND profileList = nullptr;
};

const platform::CommandRow<ProfileEditor> ProfileEditor::kCommands[] = {
    {IDC_PROFILES_ADD, &ProfileEditor::OnAddProfile},
    {IDC_PROFILES_DELETE, &ProfileEditor::OnDeleteProfiles},
    {IDC_PROFILES_RENAME, &ProfileEditor::OnRenameProfile},
    {IDC_PROFILES_COPY, &ProfileEditor::OnCopyProfile},
    {IDC_PROFILES_ADD_PROGRAM, &ProfileEditor::OnAddPrograms},
    {IDC_PROFILES_DELETE_PROGRAM, &ProfileEditor::OnDeletePrograms},
    {IDOK, &ProfileEditor::OnOk},
    {IDCANCEL, &ProfileEditor::OnCancel},
};

INT_PTR ProfileEditor::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInitDialog();
            return TRUE;
        case WM_COMMAND:
            return platform::CarryOutCommand(*this, kCommands, LOWORD(wParam)) ? TRUE : FALSE;
        case WM_NOTIFY:
            OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
            return FALSE;
        default:
            return FALSE;
    }
}

void ProfileEditor::OnInitDialog() {
    profileList = Control(IDC_PROFILES_LIST);

    platform::AddListColumns(profileList, Module(), kProfileColumns);
    platform::SelectFullRows(profileList);
    edited.ShowIn(profileList);

    programs.SetUp(Control(IDC_PROFILES_PROGRAMS), Module());

    for (const ButtonRow& row : kButtons) {
        // Add program stays enabled until the selection changes for the first time.
        if (row.button != IDC_PROFILES_ADD_PROGRAM) EnableWindow(Control(row.button), FALSE);
    }
}

void ProfileEditor::OnNotify(const NMHDR& header) {
    if (header.code != LVN_ITEMCHANGED) return;
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    // A new text or the focus does not change the selection. A change of all rows at once carries no states.
    if (change.iItem >= 0 && ((change.uOldState ^ change.uNewState) & LVIS_SELECTED) == 0) return;
    if (header.hwndFrom == profileList && !isDeleting) OnProfilesSelected();
    if (header.hwndFrom == programs.Window()) OnProgramsSelected();
}

void ProfileEditor::OnProfilesSelected() {
    const int count = edited.SelectedCount();
    for (const ButtonRow& row : kButtons) {
        const bool isEnabled = count == 1 ? row.withOne : count > 1 && row.withMany;
        platform::EnableControl(Window(), row.button, isEnabled, profileList);
    }
    const auto profile = edited.OnlySelected();
    programs.Show(profile ? edited.ProgramsOf(*profile) : std::vector<ApplicationEntry>());
}

void ProfileEditor::OnProgramsSelected() {
    platform::EnableControl(Window(), IDC_PROFILES_DELETE_PROGRAM, programs.SelectedCount() > 0, programs.Window());
}

std::optional<std::size_t> ProfileEditor::AskForOneProfile() const {
    const int count = edited.SelectedCount();
    if (count == 1) return edited.OnlySelected();
    Warn(count == 0 ? IDS_NO_PROFILE_SELECTED : IDS_MANY_PROFILES_SELECTED);
    return std::nullopt;
}

std::optional<std::wstring> ProfileEditor::AskForName(ProfileNameMode mode, std::wstring_view current) const {
    return RunProfileNameDialog(context.module, Window(), {mode, std::wstring(current)});
}

bool ProfileEditor::RefuseTakenName(const std::wstring& name) const {
    const bool isTaken = model::IsNameInUse(edited.All(), name);
    if (isTaken) Warn(IDS_PROFILE_NAME_USED);
    return isTaken;
}

void ProfileEditor::OnAddProfile() {
    if (!context.boxes.AllowsAnotherItem(Window(), edited.Count())) return;
    const auto name = AskForName(ProfileNameMode::Add);
    if (!name || name->empty() || RefuseTakenName(*name)) return;
    model::ProfileRecord profile = model::NewProfileRecord();
    profile.name = *name;
    edited.Append(std::move(profile));
}

void ProfileEditor::OnDeleteProfiles() {
    if (edited.SelectedCount() == 0) return Warn(IDS_NO_PROFILE_SELECTED);
    if (!context.boxes.ConfirmDeletion(Window())) return;
    const int countBefore = edited.Count();
    const bool isComplete = DeleteSelectedProfiles();
    if (edited.Count() != countBefore) OnProfilesSelected();
    if (!isComplete) return Warn(IDS_DEFAULT_PROFILE_DELETE);
    // At once: Cancel does not take it back (docs/kept-behaviour.md).
    context.settings.selectedProfile = 0;
    context.display.ShowSelectedProfile();
}

bool ProfileEditor::DeleteSelectedProfiles() {
    // The selection is read once after all deletions, not after each.
    const platform::RaisedFlag flag(isDeleting);
    return edited.DeleteSelected();
}

void ProfileEditor::OnRenameProfile() {
    const auto profile = AskForOneProfile();
    if (!profile) return;
    if (edited.IsDefault(*profile)) return Warn(IDS_DEFAULT_PROFILE_RENAME);
    const auto name = AskForName(ProfileNameMode::Rename, model::ComparedName(edited.All()[*profile]));
    if (name && !RefuseTakenName(*name)) edited.Rename(*profile, *name);
}

void ProfileEditor::OnCopyProfile() {
    const auto profile = AskForOneProfile();
    if (!profile) return;
    const auto name = AskForName(ProfileNameMode::Copy, model::ComparedName(edited.All()[*profile]));
    if (!name || RefuseTakenName(*name)) return;
    // Only new profiles are limited in number, not copies.
    edited.Append(model::CopyWithoutPrograms(edited.All()[*profile], *name));
}

void ProfileEditor::OnAddPrograms() {
    const auto profile = AskForOneProfile();
    if (!profile || !context.boxes.AllowsAnotherItem(Window(), programs.Count())) return;
    const auto chosen = context.choosePrograms(context.module, Window());
    if (chosen) AddPrograms(*profile, *chosen);
}

void ProfileEditor::AddPrograms(std::size_t profile, const std::vector<ApplicationEntry>& chosen) {
    for (const ApplicationEntry& program : chosen) {
        // While a row's icon was fetched, a message may have selected another profile.
        if (edited.OnlySelected() != profile) return;
        if (const auto user = edited.ProfileUsing(program)) {
            Warn(*user == profile ? IDS_PROGRAM_REGISTERED : IDS_PROGRAM_USED_ELSEWHERE);
            continue;
        }
        if (!context.boxes.AllowsAnotherItem(Window(), programs.Count())) return;
        // In this order: a row without its program would shift every later one.
        edited.AddProgram(profile, program);
        programs.Append(program);
    }
}

void ProfileEditor::OnDeletePrograms() {
    const auto profile = AskForOneProfile();
    if (!profile) return;
    if (programs.SelectedCount() == 0) return Warn(IDS_NO_PROGRAM_SELECTED);
    if (!context.boxes.ConfirmDeletion(Window())) return;
    const platform::PausedRedraw pause(programs.Window());
    while (const auto row = platform::FirstSelectedRow(programs.Window())) {
        if (static_cast<std::size_t>(*row) >= edited.ProgramsOf(*profile).size()) break;
        edited.RemoveProgram(*profile, static_cast<std::size_t>(*row));
        platform::DeleteListRow(programs.Window(), *row);
    }
    OnProgramsSelected();
}

void ProfileEditor::OnOk() {
    model::MouseSettings& settings = context.settings;
    settings.profiles = model::ProfileSet(edited.All());  // if the copy fails, the list stays unchanged
    if (settings.selectedProfile >= settings.profiles.size()) settings.selectedProfile = 0;
    const bool isSaved =
        !edited.IsChanged() || platform::AtBoundary(false, [&] { return model::SaveProfiles(settings); });
    context.display.ShowProfiles();
    if (!isSaved) Warn(IDS_SETTINGS_FAILED);
    End(platform::DialogResult::Accepted);
}

void ProfileEditor::OnCancel() {
    End(platform::DialogResult::Cancelled);
}

}  // namespace

void RunProfileEditor(const ProfileEditorContext& context) {
    ProfileEditor(context).Run();
}

}  // namespace kvn::profiles

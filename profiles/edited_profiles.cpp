#include "profiles/edited_profiles.h"

#include <commctrl.h>

#include "model/profile_list.h"
#include "platform/list_view.h"
#include "platform/paused_redraw.h"

namespace kvn::profiles {
namespace {

// Compares as the file system does, without the rules of any language.
bool IsSamePath(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.c_str(), static_cast<int>(a.size()), b.c_str(), static_cast<int>(b.size()), TRUE) ==
           CSTR_EQUAL;
}

}  // namespace

void EditedProfiles::ShowIn(HWND listView) {
    list = listView;
    const platform::PausedRedraw pause(list);
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        platform::InsertListRow(list, static_cast<int>(i), profiles[i].name);
    }
}

int EditedProfiles::Count() const {
    return static_cast<int>(profiles.size());
}

int EditedProfiles::SelectedCount() const {
    return platform::SelectedRowCount(list);
}

std::optional<std::size_t> EditedProfiles::OnlySelected() const {
    if (SelectedCount() != 1) return std::nullopt;
    const auto row = platform::FirstSelectedRow(list);
    if (!row || static_cast<std::size_t>(*row) >= profiles.size()) return std::nullopt;
    return static_cast<std::size_t>(*row);
}

bool EditedProfiles::IsDefault(std::size_t profile) const {
    return model::ComparedName(profiles[profile]) == defaultName;
}

void EditedProfiles::Append(model::ProfileRecord profile) {
    profiles.push_back(std::move(profile));
    const int row = Count() - 1;
    platform::InsertListRow(list, row, profiles.back().name);
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    isChanged = true;
}

void EditedProfiles::Rename(std::size_t profile, const std::wstring& name) {
    profiles[profile].name = name;
    platform::SetListText(list, static_cast<int>(profile), 0, name);
    isChanged = true;
}

bool EditedProfiles::DeleteSelected() {
    const platform::PausedRedraw pause(list);
    while (const auto selected = platform::FirstSelectedRow(list)) {
        const auto row = static_cast<std::size_t>(*selected);
        if (row >= profiles.size()) return true;
        if (IsDefault(row) || profiles.size() == 1) return false;
        Delete(row);
    }
    return true;
}

void EditedProfiles::Delete(std::size_t row) {
    const std::size_t deleted = model::ProfileToDelete(profiles, row);
    platform::DeleteListRow(list, static_cast<int>(row));
    profiles.erase(profiles.begin() + static_cast<std::ptrdiff_t>(deleted));
    for (std::size_t i = deleted; i < row; ++i) {
        platform::SetListText(list, static_cast<int>(i), 0, profiles[i].name);
    }
    isChanged = true;
}

std::optional<std::size_t> EditedProfiles::ProfileUsing(const model::ApplicationEntry& program) const {
    return model::ProfileWithProgram(profiles, program.path, IsSamePath);
}

void EditedProfiles::AddProgram(std::size_t profile, const model::ApplicationEntry& program) {
    profiles[profile].settings.applications.push_back(program);
}

void EditedProfiles::RemoveProgram(std::size_t profile, std::size_t program) {
    auto& programs = profiles[profile].settings.applications;
    programs.erase(programs.begin() + static_cast<std::ptrdiff_t>(program));
    isChanged = true;
}

}  // namespace kvn::profiles

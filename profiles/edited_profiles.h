// The profile editor's own copy of the profiles, and the list view that shows them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/profile.h"

namespace kvn::profiles {

// Row i of the list view always shows the name of profile i; a row beyond them, which only somebody else's messages can
// have made, is nobody's. Every edit but the addition of a program is a change that the profile file needs.
class EditedProfiles {
public:
    // The name is the one by which the default profile is known.
    EditedProfiles(model::ProfileSet source, std::wstring nameOfDefault)
        : profiles(std::move(source)), defaultName(std::move(nameOfDefault)) {}

    // Fills the list view, which has no rows yet.
    void ShowIn(HWND listView);

    const model::ProfileSet& All() const { return profiles; }
    bool IsChanged() const { return isChanged; }
    int Count() const;
    int SelectedCount() const;
    // The selected profile when there is exactly one.
    std::optional<std::size_t> OnlySelected() const;
    bool IsDefault(std::size_t profile) const;

    void Append(model::ProfileRecord profile);
    void Rename(std::size_t profile, const std::wstring& name);

    // Deletes the selected profiles from the top. False when it came to the default profile, which ends the deletion;
    // what was deleted before stays so. The one profile that is left of a list counts as the default one.
    bool DeleteSelected();

    const std::vector<model::ApplicationEntry>& ProgramsOf(std::size_t profile) const {
        return profiles[profile].settings.applications;
    }
    // The first profile that has the program; paths that differ only in case are one program's.
    std::optional<std::size_t> ProfileUsing(const model::ApplicationEntry& program) const;
    void AddProgram(std::size_t profile, const model::ApplicationEntry& program);
    void RemoveProgram(std::size_t profile, std::size_t program);

private:
    void Delete(std::size_t row);

    model::ProfileSet profiles;
    std::wstring defaultName;
    bool isChanged = false;
    HWND list = nullptr;
};

}  // namespace kvn::profiles

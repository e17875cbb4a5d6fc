// The profile editor's copy of the profiles, and the list view that shows them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "model/profile.h"

namespace kvn::profiles {

// Row i of the list view always shows the name of profile i; rows beyond them, which only messages from other programs
// can add, are ignored. Every edit except adding a program has to be saved in the profile file.
class EditedProfiles {
public:
    // Whether this is the name of the default profile.
    EditedProfiles(model::ProfileSet source, std::wstring nameOfDefault)
        : profiles(std::move(source)), defaultName(std::move(nameOfDefault)) {}

    // Fills the list view, which has no rows yet.
    void ShowIn(HWND listView);

    const model::ProfileSet& All() const { return profiles; }
    bool IsChanged() const { return isChanged; }
    int Count() const;
    int SelectedCount() const;
    // The selected profile if exactly one is selected.
    std::optional<std::size_t> OnlySelected() const;
    bool IsDefault(std::size_t profile) const;

    void Append(model::ProfileRecord profile);
    void Rename(std::size_t profile, const std::wstring& name);

    // Deletes the selected profiles from the top down. False if it reached the default profile, which ends the
    // deletion; earlier deletions stay. The last remaining profile of a list counts as the default one.
    bool DeleteSelected();

    const std::vector<model::ApplicationEntry>& ProgramsOf(std::size_t profile) const {
        return profiles[profile].settings.applications;
    }
    // The first profile that has the program; paths that differ only in case name the same program.
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

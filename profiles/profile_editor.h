// The modal dialog "Edit Profile": adds, deletes, renames and copies the profiles of a mouse model, and ties programs
// to them.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <vector>

#include "model/mouse_settings.h"
#include "platform/message_box.h"
#include "profiles/program_selection.h"

namespace kvn::profiles {

// Where the page shows the profiles by their names.
class IProfileDisplay {
public:
    // Shows the settings' profiles again, with the selected one.
    virtual void ShowProfiles() = 0;
    // Shows another one of them as selected, and what the page lists of it.
    virtual void ShowSelectedProfile() = 0;

protected:
    ~IProfileDisplay() = default;
};

// Asks the user for programs, as RunProgramSelection does.
using ProgramChooser = std::function<std::optional<std::vector<model::ApplicationEntry>>(HINSTANCE, HWND)>;

// What the editor borrows from the page.
struct ProfileEditorContext {
    HINSTANCE module;
    HWND page;
    model::MouseSettings& settings;
    const platform::MessageBoxes& boxes;
    IProfileDisplay& display;
    ProgramChooser choosePrograms = RunProgramSelection;
};

// Runs the dialog above the page. It works on a copy of the profiles that OK puts in place, and then writes the profile
// file unless programs were merely added. A deletion selects the first profile at once, and Cancel does not take that
// back; the selection stays within the list in any case. The page's panes go on showing what they showed, but for the
// gestures, which are the selected profile's.
void RunProfileEditor(const ProfileEditorContext& context);

}  // namespace kvn::profiles

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

// The part of the page that shows the profiles.
class IProfileDisplay {
public:
    // Shows the settings' profiles again, with the selected one.
    virtual void ShowProfiles() = 0;
    // Shows another one as selected, with its gestures.
    virtual void ShowSelectedProfile() = 0;

protected:
    ~IProfileDisplay() = default;
};

// Asks the user for programs, as RunProgramSelection does.
using ProgramChooser = std::function<std::optional<std::vector<model::ApplicationEntry>>(HINSTANCE, HWND)>;

// The parts of the page that the editor uses.
struct ProfileEditorContext {
    HINSTANCE module;
    HWND page;
    model::MouseSettings& settings;
    const platform::MessageBoxes& boxes;
    IProfileDisplay& display;
    ProgramChooser choosePrograms = RunProgramSelection;
};

// Runs the dialog above the page. It works on a copy of the profiles. OK puts the copy in place and writes the profile
// file; if you only added programs, they are saved with the next Apply. A deletion selects the first profile at once,
// and Cancel does not undo that; the selection stays within the list in any case. The page's panes stay as they are,
// except for the gestures, which are those of the selected profile.
void RunProfileEditor(const ProfileEditorContext& context);

}  // namespace kvn::profiles

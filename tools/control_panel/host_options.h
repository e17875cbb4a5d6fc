// The command line of the control-panel host.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kvn::control_panel {

enum class Action { ShowSheet, Register, Unregister };

struct Options {
    Action action = Action::ShowSheet;
    std::wstring dll;          // full path; for ShowSheet, empty means "the registered handlers"
    std::wstring screenshot;   // full path of the picture; empty: no picture, the user closes the sheet
    std::optional<int> tab;    // index, from 0, in the page's tab control
    std::optional<int> focus;  // id of a control on the page or on one of its panes
    std::wstring readyFile;    // full path; written once tab and focus are set; empty: none

    bool IsInteractive() const { return action == Action::ShowSheet && screenshot.empty(); }
};

// `arguments` does not include the program's name. Throws HostError with kExitUsage.
Options ParseOptions(const std::vector<std::wstring>& arguments);

}  // namespace kvn::control_panel

#include "profiles/program_selection.h"

namespace kvn::profiles {

bool RunProgramSelection(HINSTANCE /*module*/, HWND /*owner*/, std::vector<model::ApplicationEntry>& /*chosen*/) {
    return false;
}

}  // namespace kvn::profiles

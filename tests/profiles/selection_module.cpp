// The selection of programs in a separate library: each loading starts without the remembered state.
#include "profiles/program_selection.h"

#include <utility>

extern "C" __declspec(dllexport) bool SelectPrograms(HINSTANCE resources, HWND owner,
                                                     std::vector<kvn::model::ApplicationEntry>* chosen) {
    auto answer = kvn::profiles::RunProgramSelection(resources, owner);
    if (answer) *chosen = *std::move(answer);
    return answer.has_value();
}

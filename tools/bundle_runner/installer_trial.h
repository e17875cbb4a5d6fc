// Installs the product, opens the page as the Mouse control panel does, and removes the product again.
#pragma once

#include <string>
#include <vector>

namespace kvn::bundle {

enum class StepOutcome { Done, Failed, LeftOut };

struct Step {
    std::string what;
    StepOutcome outcome = StepOutcome::Failed;
    std::string reason;  // why it failed or was left out
};

// Left out if the user may not install, or has the product already. The pictures and the programs' output go to
// `folder`.
std::vector<Step> TryInstaller(const std::wstring& installer, const std::wstring& programs, const std::wstring& folder);

}  // namespace kvn::bundle

// A mouse model's settings as one file that is read alike on every machine.
#pragma once

#include <string>

#include "service/options/answer.h"

namespace kvn::service {

// Writes the settings of the published mouse to this full path: the whole new file, or what was there stays. Needs no
// running service.
Answer ExportSettings(const std::wstring& file);

// What the file is called when nobody has said it; no path.
std::wstring SuggestedExportName();

}  // namespace kvn::service

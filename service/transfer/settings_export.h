// Exports a mouse model's settings as one file that means the same on every machine.
#pragma once

#include <string>

#include "service/options/answer.h"

namespace kvn::service {

// Writes the settings of the published mouse to this full path. Either the new file is complete or the old one stays.
// Needs no running service.
Answer ExportSettings(const std::wstring& file);

// The proposed name of the file, without a path.
std::wstring SuggestedExportName();

}  // namespace kvn::service

// The folder of the resident service: its help page and mouse pictures are next to its program.
#pragma once

#include <string>

namespace kvn::page {

// The path of the running service's program up to its first "KvnMouseApl": its folder, ending with a backslash. Empty
// if the service does not run, its process cannot be opened or its path does not contain that word.
std::wstring ServiceFolder();

}  // namespace kvn::page

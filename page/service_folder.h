// Where the resident service is installed: its help page and mouse pictures lie beside its program.
#pragma once

#include <string>

namespace kvn::page {

// The path of the running service's program up to its first "KvnMouseApl": its folder, ending with a backslash. Empty
// when the service does not run, its process cannot be opened or its path holds no such word.
std::wstring ServiceFolder();

}  // namespace kvn::page

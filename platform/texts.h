// Texts of a module's string table.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

// The text with this number, of any length; empty if the module has none.
[[nodiscard]] std::wstring LoadText(HINSTANCE module, UINT textId);

}  // namespace kvn::platform

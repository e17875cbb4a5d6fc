// Combo boxes that offer functions. An entry's number is its function's code.
#pragma once

#include <windows.h>

#include <vector>

#include "model/etc_key.h"
#include "model/function_catalogue.h"

namespace kvn::gestures {

// Appends the functions, with their names from the module's string table.
void AddFunctions(HWND combo, HINSTANCE module, const std::vector<model::CatalogueRow>& functions);

// The keys that the entry "Arbitrary key" shows in brackets; its name alone if there are none. The selection stays.
void ShowArbitraryKeys(HWND combo, HINSTANCE module, const model::EtcKey& keys);

}  // namespace kvn::gestures

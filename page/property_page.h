// The property page: its template and its dialog procedure, which forwards every message to the panel.
#pragma once

#include <windows.h>

#include <prsht.h>

namespace kvn::page {

// A page that can be added to a sheet; null if the common controls cannot make one.
[[nodiscard]] HPROPSHEETPAGE CreatePage();

}  // namespace kvn::page

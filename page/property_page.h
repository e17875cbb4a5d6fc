// The property page: its template and its dialog procedure, which forwards every message to the panel.
#pragma once

#include <windows.h>

#include <prsht.h>

namespace kvn::page {

// A page that can be added to a sheet; null when the common controls cannot make one.
HPROPSHEETPAGE CreatePage();

// Tells the sheet that this page's settings have changed, so that it enables Apply.
void MarkPageChanged(HWND page);

}  // namespace kvn::page

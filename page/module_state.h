// The state of the loaded module: the server count and the panel that waits for its page.
#pragma once

#include <windows.h>

#include <memory>

#include "page/property_panel.h"

namespace kvn::page {

// References to the module's COM objects. Plain numbers: every object lives in one apartment.
void AddServerReference();
void ReleaseServerReference();
bool HasServerReferences();

// Makes a new panel the current one. The current panel becomes null when there is no memory for one.
void MakeCurrentPanel() noexcept;

// The panel for the page that comes next; made now when a page has taken the last one. Null without memory.
IPropertyPanel* CurrentPanel() noexcept;

// Hands the current panel to the page that opens, which gives it up with its window.
std::shared_ptr<IPropertyPanel> TakeCurrentPanel() noexcept;

}  // namespace kvn::page

// The state of the loaded module: the server count, the panel that waits for its page, and what keeps the module
// loaded.
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

// A page may outlive every COM object of the module, and COM unloads a module without objects: so each page that the
// shell has taken holds a reference to the loaded module itself.
void HoldModuleForPage() noexcept;

// Notes that a page and its panel are gone, so that their reference can be given back. Unloads nothing: code of the
// module is still running.
void ReleaseModuleOfPage() noexcept;

// Gives back what pages that are gone have held. For callers that hold the module themselves, as COM does when it asks
// whether it may unload it.
void GiveBackModule() noexcept;

}  // namespace kvn::page

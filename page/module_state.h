// The state of the loaded module: the server count, and the references that keep the module loaded.
#pragma once

namespace kvn::page {

// Count the references to the module's COM objects.
void AddServerReference();
void ReleaseServerReference();
bool HasServerReferences();

// A page may outlive every COM object of the module, and COM unloads a module without objects. So each page that the
// shell has taken holds a reference to the loaded module itself.
void HoldModuleForPage() noexcept;

// Notes that a page and its panel are destroyed, so that their reference can be released. Unloads nothing: code of the
// module is still running.
void ReleaseModuleOfPage() noexcept;

// Releases the references of destroyed pages. For callers that hold the module themselves, as COM does when it asks
// whether it may unload the module.
void GiveBackModule() noexcept;

}  // namespace kvn::page

// One property-sheet handler, loaded and ready to be asked for its pages.
#pragma once

#include <windows.h>

#include <shlobj.h>

#include <string>
#include <vector>

#include "tools/control_panel/handlers.h"
#include "tools/control_panel/owned.h"

namespace kvn::control_panel {

// Like COM, keeps a DLL loaded that still has objects.
void FreeUnusedLibrary(HMODULE module);
using Library = Owned<HMODULE, &FreeUnusedLibrary>;

class PageProvider {
public:
    // Both throw HostError if the class cannot be created in this thread's apartment or provides no property pages.
    static PageProvider FromHandler(const Handler& handler);
    static PageProvider FromLibrary(const std::wstring& dll);

    // Appends the pages that the handler offers, if any. Throws HostError if the handler fails.
    void AddPagesTo(std::vector<Page>& pages) const;

private:
    PageProvider() = default;

    Library library;  // empty if COM keeps the DLL; must outlive the object in it
    ComPointer<IShellPropSheetExt> extension;
};

}  // namespace kvn::control_panel

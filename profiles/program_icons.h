// The small icons of programs, for the rows of a list view.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "model/profile.h"
#include "platform/unique_resource.h"

namespace kvn::profiles {

// An image list of 16 by 16 pixels that only grows. This object owns it: keep the object as long as the list view shows
// it.
class ProgramIcons {
public:
    ProgramIcons();

    // Makes it the small-image list of the list view, which from then on no longer destroys its image list.
    void AttachTo(HWND list) const;

    // Appends the icon of the file and returns its index; -1 if there is no such file or it has no icon. Meanwhile the
    // shell's extensions may dispatch any message of this thread.
    int Append(const std::wstring& path);

private:
    platform::Owned<HIMAGELIST, &ImageList_Destroy> images;
};

// Inserts a program's row into a list view: its name with the icon of this index, and its path in the second column.
void InsertProgramRow(HWND list, int row, const model::ApplicationEntry& program, int icon);

}  // namespace kvn::profiles

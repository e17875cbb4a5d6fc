// The small icons of programs, for the rows of a list view.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "model/profile.h"
#include "platform/unique_resource.h"

namespace kvn::profiles {

// An image list of 16 by 16 pixels that only grows. It stays this object's: keep it as long as the list view shows it.
class ProgramIcons {
public:
    ProgramIcons();

    // Makes it the small-image list of the list view, which from then on gives back no image list when it goes.
    void AttachTo(HWND list) const;

    // Appends the icon of the file and returns its index; -1 when there is no such file or it has no icon. The shell is
    // asked, whose extensions may have any message of this thread dispatched meanwhile.
    int Append(const std::wstring& path);

private:
    platform::Owned<HIMAGELIST, &ImageList_Destroy> images;
};

// Inserts a program's row into a list view: its name with the icon of this index, and its path in the second column.
void InsertProgramRow(HWND list, int row, const model::ApplicationEntry& program, int icon);

}  // namespace kvn::profiles

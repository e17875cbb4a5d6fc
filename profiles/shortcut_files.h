// The shortcut files of a folder and of everything below it.
#pragma once

#include <string>
#include <vector>

namespace kvn::profiles {

// Appends the full path of every ".lnk" file: those of the sub-folders first, as the file system lists them, then the
// folder's own. A folder that cannot be searched, or whose path is too long, contributes nothing.
//
// Links to folders are followed, but not in circles: a link to a folder that contains the link is skipped, and each
// folder is entered through a link only once.
void AppendShortcutFiles(const std::wstring& folder, std::vector<std::wstring>& files);

}  // namespace kvn::profiles

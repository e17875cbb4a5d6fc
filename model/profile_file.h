// The profile file on disk. Paths are wide, so a folder name may hold any character.
#pragma once

#include <string>

#include "model/profile.h"

namespace kvn::model {

// Replaces the list with the profiles of the file and returns their number; 0, and an empty list, if the file is
// missing, unreadable, broken or without profiles. The file is not changed.
std::size_t LoadProfileFile(const std::wstring& path, ProfileSet& list);

// Writes the list, which must not be empty, over the file. True: the file is the new one, whole and flushed to disk.
// False: the file is unchanged. That includes a file marked read-only, and a list too long to be read back.
[[nodiscard]] bool SaveProfileFile(const std::wstring& path, const ProfileSet& list);

// The same in ASCII: all other characters are escaped, so that the file means the same under every code page.
[[nodiscard]] bool ExportProfileFile(const std::wstring& path, const ProfileSet& list);

// Recovers from an interrupted save: if the file is missing and the temporary file is complete, the temporary file
// takes its place; otherwise the temporary file is deleted. A save that is still running, in any program, is not
// disturbed.
void FinishOrRemoveInterruptedSave(const std::wstring& path);

// Renames a file that cannot be read, so that another can take its place and its contents are kept: to the first free
// name of "name.broken-1.xml", "name.broken-2.xml" and so on. True if there is nothing at the path any more; false if
// another program has the file open, or if it holds profiles after all.
[[nodiscard]] bool SetAsideProfileFile(const std::wstring& path);

}  // namespace kvn::model

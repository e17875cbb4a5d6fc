// The profile file on disk. Paths are wide, so a folder name may hold any character.
#pragma once

#include <string>

#include "model/profile.h"

namespace kvn::model {

// Replaces the list by the profiles of the file and returns their number; 0, and an empty list, when the file is
// missing, unreadable, broken or without profiles. The file is not changed.
std::size_t LoadProfileFile(const std::wstring& path, ProfileSet& list);

// Writes the list, which must not be empty, over the file. True: the file is the new one, whole and flushed to disk.
// False: the file is what it was; that is also so when it is marked read-only, and for a list too long to be read back.
[[nodiscard]] bool SaveProfileFile(const std::wstring& path, const ProfileSet& list);

// The same in ASCII: everything beyond is escaped, so that it is read alike under every code page.
[[nodiscard]] bool ExportProfileFile(const std::wstring& path, const ProfileSet& list);

// Deals with what a save has left that was cut off, by a power failure or with its program. Where nothing stands at the
// path, as when a disk has lost the old name before it had the new one, a file that was written to its end is put
// there; any other is removed. A save that is under way, in whatever program, goes on undisturbed.
void FinishOrRemoveInterruptedSave(const std::wstring& path);

// Renames a file of which nothing can be read, so that another can take its place and nothing in it is lost: to the
// first free one of "name.broken-1.xml", "name.broken-2.xml" and so on. True when nothing stands at the path any
// longer; false when another program has the file open, or when it holds profiles after all.
[[nodiscard]] bool SetAsideProfileFile(const std::wstring& path);

}  // namespace kvn::model

// The rules of the list of profiles: which names are taken, which profile a program belongs to, what a copy contains.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "model/profile.h"

namespace kvn::model {

// The part of a profile's name that is compared: its first 255 characters.
std::wstring_view ComparedName(const ProfileRecord& profile);

// Whether a profile has exactly this compared name, including case.
bool IsNameInUse(const ProfileSet& profiles, std::wstring_view name);

// The profile that is removed when the one at this index is deleted: the first with its name. Names are unique, so the
// two differ only if a file was edited by hand.
std::size_t ProfileToDelete(const ProfileSet& profiles, std::size_t index);

// The index of the selected profile: the stored one, or 0 if no profile has that index. The list must not be empty.
std::size_t SelectedProfileOf(const ProfileSet& profiles);

// A copy under another name. It has no programs: a program belongs to one profile.
ProfileRecord CopyWithoutPrograms(const ProfileRecord& source, const std::wstring& name);

// How two paths are compared; the caller supplies the rules of Windows.
using PathComparison = bool (*)(const std::wstring&, const std::wstring&);

// The first profile that has a program with this path.
std::optional<std::size_t> ProfileWithProgram(const ProfileSet& profiles, const std::wstring& path,
                                              PathComparison isSamePath);

}  // namespace kvn::model

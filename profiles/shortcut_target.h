// The target of a shortcut file.
#pragma once

#include <string>

namespace kvn::profiles {

// The path that the shortcut file stores, up to 259 characters; empty if the file is no shortcut or has no path. The
// calling thread must be in a COM apartment.
std::wstring ShortcutTarget(const std::wstring& shortcut);

// The program behind a shortcut that Windows Installer advertises, up to 259 characters; empty if the shortcut is not
// of this kind, or its program is not installed.
std::wstring AdvertisedProgram(const std::wstring& shortcut);

}  // namespace kvn::profiles

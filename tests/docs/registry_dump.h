// A registry key as text, byte for byte.
#pragma once

#include <string>

namespace kvn::docs {

// Every value of the key below HKEY_CURRENT_USER: its name, type and size, and its bytes in rows of sixteen. The values
// come in the order of the page's own table. Throws StoryError if the key holds a value that is not one of the page's.
std::string DumpKey(const std::wstring& key);

// The bytes in rows of sixteen: offset, hexadecimal, characters.
std::string DumpBytes(const std::string& bytes);

}  // namespace kvn::docs

// Profile files as text: written by hand for a test, and read afterwards.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kvn::test {

// An element's name and contents.
using ProfileElement = std::pair<std::string, std::string>;

// One profile with this name and these elements; the others have their defaults.
std::string ProfileText(const std::string& name, const std::vector<ProfileElement>& elements = {});

// A whole file of profiles.
std::string ProfileFileText(const std::vector<std::string>& profiles, int selected = 0);

void WriteFileText(const std::wstring& path, const std::string& text);
// Empty if there is no such file.
std::string ReadFileText(const std::wstring& path);
bool FileExists(const std::wstring& path);

// The contents of the element in the index-th profile of a file's text, or of the file itself with index -1. "(none)"
// if there is no such element.
std::string ElementIn(const std::string& fileText, int profileIndex, const std::string& element);

}  // namespace kvn::test

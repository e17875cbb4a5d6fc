// The machine that the tests run on, as far as it affects them. Nothing here names the user or the computer.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace kvn::bundle {

using Fact = std::pair<std::string, std::string>;

std::vector<Fact> MachineFacts();

// The true version, regardless of the manifest: 601 for 6.1, 1000 for 10.0.
unsigned WindowsVersion();
// For example "10.0".
std::wstring WindowsVersionText();
bool IsAdministrator();
bool SpeaksJapanese();

}  // namespace kvn::bundle

// The texts about the program's options.
#pragma once

#include <string>

#include "service/options/command_line.h"

namespace kvn::service {

std::wstring HelpText();
std::wstring ErrorText(const UsageError& error);

}  // namespace kvn::service

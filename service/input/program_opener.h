// Opens programs and places of Windows.
#pragma once

#include <string>

#include "service/engine/functions.h"

namespace kvn::service {

// Opens it; returns what was done, in English. May take long; shows no message of its own.
std::wstring OpenProgram(Program program);

}  // namespace kvn::service

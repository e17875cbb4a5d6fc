// Opens programs and places of Windows.
#pragma once

#include <string>

#include "service/engine/functions.h"

namespace kvn::service {

// Opens it. The text says in English what was done. May take long; shows no message of its own.
std::wstring OpenProgram(Program program);

}  // namespace kvn::service

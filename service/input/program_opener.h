// Opens programs and places of Windows.
#pragma once

#include <string>

#include "service/engine/functions.h"

namespace kvn::service {

// Opens it; returns a description of the action, in English. May take long; shows no message.
std::wstring OpenProgram(Program program);

}  // namespace kvn::service

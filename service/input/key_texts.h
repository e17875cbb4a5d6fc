// The input that a function makes, in English words for the log.
#pragma once

#include <string>

#include "service/engine/functions.h"
#include "service/engine/orders.h"

namespace kvn::service {

// "Ctrl+C", "left button", "scrolled left"; "nothing" for an action that makes no input.
std::wstring TextOfInput(const Order& order, const FunctionRow& row);

}  // namespace kvn::service

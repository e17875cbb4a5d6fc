// The actions in English words, for the log.
#pragma once

#include <string>

#include "service/engine/functions.h"
#include "service/engine/orders.h"

namespace kvn::service {

// For an action that made no input.
inline constexpr wchar_t kNothingDone[] = L"nothing";

std::wstring TextOfScroll(bool isToTheLeft);

// "Ctrl+C", "left button", "scrolled left"; "nothing" for an action that makes no input.
std::wstring TextOfInput(const Order& order, const FunctionRow& row);

}  // namespace kvn::service

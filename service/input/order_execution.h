// What the worker does for one order.
#pragma once

#include <string>

#include "service/engine/orders.h"
#include "service/input/holdings.h"

namespace kvn::service {

// Carries out the order; returns what was done in a few English words.
std::wstring ExecuteOrder(const Order& order, Holdings& holdings);

// Whether the order carries out a function, and is neither a note nor a further report of a push.
bool CountsAsAction(const Order& order);

}  // namespace kvn::service

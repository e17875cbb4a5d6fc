// What the worker does for one order.
#pragma once

#include <string>

#include "service/engine/orders.h"
#include "service/input/holdings.h"

namespace kvn::service {

// Carries the order out; the text says in a few English words what was done.
std::wstring DoOrder(const Order& order, Holdings& holdings);

// Whether the order is a function carried out, not merely a note or one more report of a push.
bool CountsAsAction(const Order& order);

}  // namespace kvn::service

// The performer's reports to other parts.
#pragma once

#include <functional>
#include <string>

#include "service/engine/orders.h"

namespace kvn::service {

struct PerformerOutlets {
    // On the worker: an order was carried out or noted. `done` describes the action in a few English words ("Ctrl+C",
    // "opened explorer.exe", "no window to close").
    std::function<void(const Order& order, const std::wstring& done)> onDone;
    // On the keeper: StrokeBegin, StrokeMove and StrokeEnd.
    std::function<void(const Order& order)> onStroke;
};

}  // namespace kvn::service

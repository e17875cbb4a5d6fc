// One press of a button, from its decision to its release.
#pragma once

#include "service/engine/assigned_function.h"
#include "service/engine/orders.h"

namespace kvn::service {

enum class Verdict : std::uint8_t { Pass, Keep };

// The five buttons are the first slots.
inline constexpr std::size_t kButtonCount = 5;

struct Press {
    bool isKnown = false;  // until its release
    Verdict verdict = Verdict::Pass;
    model::ButtonSlot control = model::ButtonSlot::Left;  // as at the press
    AssignedFunction function;
    model::FunctionCode controlFunction = model::kFunctionNone;  // from the settings
    std::uint32_t profile = 0;
    Ticket ticket = 0;  // of a function that has begun and not ended; 0: none
};

}  // namespace kvn::service

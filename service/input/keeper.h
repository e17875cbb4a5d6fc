// The thread for everything that must not wait for the worker: ends, repeats, steps of scrolling, flying notches, the
// trail. It does not serve messages, so it must own no window.
#pragma once

#include "service/input/performer_state.h"

namespace kvn::service {

// The body of the thread. It runs until the state ends; then everything that is held ends.
void RunKeeper(PerformerState& state);

}  // namespace kvn::service

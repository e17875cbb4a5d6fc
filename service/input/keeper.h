// The thread for everything that must not wait for the worker: ends, repeats, steps of scrolling, flying notches, the
// trail. It serves windows that are made on it.
#pragma once

#include "service/input/performer_state.h"

namespace kvn::service {

// The body of the thread: until the state's end; then everything that is held ends.
void RunKeeper(PerformerState& state);

}  // namespace kvn::service

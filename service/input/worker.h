// The thread that carries out beginnings and single actions, in order. It may hang in a program that it opens; no other
// thread waits for it.
#pragma once

#include "service/input/performer_state.h"

namespace kvn::service {

// The body of the thread. It runs until the state ends.
void RunWorker(PerformerState& state);

}  // namespace kvn::service

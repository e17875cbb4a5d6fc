// Memory that is reserved for the moment when no other is left.
#pragma once

namespace kvn::platform {

// Refills the reserve after it was used; call it where other code calls ours. Cheap while the reserve is full.
void KeepMemoryReserve() noexcept;

}  // namespace kvn::platform

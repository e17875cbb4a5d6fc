// Memory that is reserved for the moment when there is no other.
#pragma once

namespace kvn::platform {

// Fills the reserve again after it was used; call it where other code calls ours. Cheap while the reserve is full.
void KeepMemoryReserve() noexcept;

}  // namespace kvn::platform

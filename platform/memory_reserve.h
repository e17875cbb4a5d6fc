// Memory that is set aside for the moment when there is no more.
#pragma once

namespace kvn::platform {

// Sets the reserve aside again after it was used; to be called where other people's code calls ours. Cheap while the
// reserve is there.
void KeepMemoryReserve() noexcept;

}  // namespace kvn::platform

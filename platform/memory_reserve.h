// Memory that is set aside for the moment when there is no more.
#pragma once

namespace kvn::platform {

// Sets the reserve aside again after it was used. Cheap while it is there.
void KeepMemoryReserve() noexcept;

}  // namespace kvn::platform

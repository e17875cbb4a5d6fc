// One service for each session.
#pragma once

#include "platform/unique_resource.h"

namespace kvn::service {

class [[nodiscard]] SessionLock {
public:
    SessionLock();

    // The first process that takes the lock has it until it ends.
    bool IsMine() const { return static_cast<bool>(mutex); }
    // Whether a process has it.
    static bool IsTaken();

private:
    platform::UniqueKernelObject mutex;
};

}  // namespace kvn::service

// One service for each session.
#pragma once

#include "platform/unique_resource.h"

namespace kvn::service {

class SessionLock {
public:
    SessionLock();

    // The first to take the lock has it until its process ends.
    bool IsMine() const { return static_cast<bool>(mutex); }
    // Whether anybody has it.
    static bool IsTaken();

private:
    platform::UniqueKernelObject mutex;
};

}  // namespace kvn::service

// Makes the service end in time, whatever hangs.
#pragma once

#include <windows.h>

#include "service/input/held_list.h"

namespace kvn::service {

// If it lives longer than the end may take, it releases what is held and ends the process.
class EndInTime {
public:
    explicit EndInTime(HeldList& heldList);
    ~EndInTime();
    EndInTime(const EndInTime&) = delete;
    EndInTime& operator=(const EndInTime&) = delete;

private:
    static void CALLBACK OnTooLate(void* heldList, BOOLEAN timerFired) noexcept;

    HANDLE timer = nullptr;
};

}  // namespace kvn::service

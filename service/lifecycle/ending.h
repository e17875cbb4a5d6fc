// Makes the service end in time, even if a part of it hangs.
#pragma once

#include <windows.h>

#include "service/input/held_list.h"

namespace kvn::service {

// If the end takes too long, it releases what is held and ends the process.
class [[nodiscard]] EndInTime {
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

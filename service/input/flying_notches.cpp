#include "service/input/flying_notches.h"

#include <cstdlib>

#include "service/engine/flying_curve.h"
#include "service/engine/notch.h"
#include "service/input/key_sending.h"

namespace kvn::service {

void FlyingNotches::Begin(std::int32_t firstRate, std::uint32_t now) {
    rate = firstRate;
    next = 1;
    start = now;
}

std::optional<std::uint32_t> FlyingNotches::Continue(std::uint32_t now) {
    InputBatch batch;
    while (rate != 0) {
        const std::optional<std::uint32_t> due = TimeOfNotch(next, std::abs(rate));
        const std::uint32_t elapsed = now - start;
        if (due && *due > elapsed) {
            batch.Send();
            return *due - elapsed;
        }
        if (!due) break;
        batch.Wheel(rate > 0 ? kNotch : -kNotch);
        ++next;
    }
    batch.Send();
    End();
    return std::nullopt;
}

}  // namespace kvn::service

// The notches of the flying wheel, sent when each is due.
#pragma once

#include <cstdint>
#include <optional>

namespace kvn::service {

class FlyingNotches {
public:
    // The rate is in notches a second; negative is towards the user.
    void Begin(std::int32_t firstRate, std::uint32_t now);
    void End() { rate = 0; }
    // Sends the notches that are due; returns the milliseconds until the next one, or nothing if the wheel has stopped.
    std::optional<std::uint32_t> Continue(std::uint32_t now);

private:
    std::int32_t rate = 0;  // 0: the wheel does not turn
    std::int32_t next = 1;  // the number of the next notch
    std::uint32_t start = 0;
};

}  // namespace kvn::service

// Decides when registry and profile file are read again: shortly after the last of several changes, but not too long
// after the first.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace kvn::service {

// Times are milliseconds of one clock that never goes back.
class ReadingSchedule {
public:
    static constexpr std::uint64_t kAfterLastChange = 100;
    static constexpr std::uint64_t kAfterFirstChange = 3000;
    // A file that could not be read may be in use: the reading is repeated after each of these delays, and then not
    // until something changes.
    static constexpr std::array<std::uint64_t, 5> kRetries{1000, 2000, 4000, 8000, 16000};

    void NoteChange(std::uint64_t now) {
        if (!firstChange) firstChange = now;
        due = std::min(now + kAfterLastChange, *firstChange + kAfterFirstChange);
        failures = 0;
    }
    void ReadAtOnce(std::uint64_t now) {
        due = now;
        failures = 0;
    }

    // When to read next; nothing if there is no reason to.
    std::optional<std::uint64_t> Due() const { return due; }
    bool IsDue(std::uint64_t now) const { return due && now >= *due; }

    void NoteReading() {
        due.reset();
        firstChange.reset();
    }
    void NoteFailure(std::uint64_t now) {
        if (failures < kRetries.size() && !due) due = now + kRetries[failures++];
    }

private:
    std::optional<std::uint64_t> firstChange;
    std::optional<std::uint64_t> due;
    std::size_t failures = 0;
};

}  // namespace kvn::service

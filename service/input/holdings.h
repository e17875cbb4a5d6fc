// The keys, buttons and scrolling that the controls hold now, by ticket. Worker and keeper share it; its lock is held
// only as long as it takes to send input.
//
// An end can overtake its beginning if the worker is late. The function then ends as soon as it begins.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/critical_section.h"
#include "service/engine/functions.h"
#include "service/engine/orders.h"
#include "service/input/held_keys.h"

namespace kvn::service {

// The keys, buttons or scrolling of one control.
struct Holding {
    bool isUsed = false;
    bool isOver = false;  // has ended, but Windows refused the release, which is tried again
    Ticket ticket = 0;
    HeldChord held{};
    std::int32_t scrollStep = 0;  // for a button that scrolls; else 0
    std::uint32_t period = 0;     // milliseconds between two repeats; 0: nothing repeats
    std::uint32_t due = 0;        // tick count of the next repeat
};

class Holdings {
public:
    explicit Holdings(HeldList& sharedList) : keys(sharedList) {}

    // False if the function's action is not keys, buttons or scrolling.
    static bool CanDo(const FunctionRow& row);

    void Begin(const Order& order, const FunctionRow& row);
    void Act(const Order& order, const FunctionRow& row);
    // passedButtons: as in Order.
    void End(Ticket ticket, std::uint32_t passedButtons);
    // Ends everything, and prevents new beginnings.
    void Close();

    // Sends the repeats that are due, and returns the milliseconds until the next one; nothing if nothing repeats.
    std::optional<std::uint32_t> Repeat(std::uint32_t now);
    bool DoRepeat();  // whether anything repeats, or waits for its release

private:
    void EndHolding(Holding& holding);
    void RepeatHolding(Holding& holding, std::uint32_t now);
    bool WasEnded(Ticket ticket);
    void RememberEnded(Ticket ticket);

    platform::CriticalSection lock;
    HeldKeys keys;
    std::array<Holding, 32> holdings{};
    // The last tickets whose end came first. No more beginnings than this can wait for the worker.
    std::array<std::optional<Ticket>, 128> ended{};
    std::size_t endedCount = 0;
    bool isClosed = false;
};

}  // namespace kvn::service

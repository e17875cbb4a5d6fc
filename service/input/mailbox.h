// Brings the hook thread input from other threads: small commands, in order, and the newest settings. The sending
// threads share a lock; the hook thread reads without a lock.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>

#include "platform/critical_section.h"
#include "service/engine/engine_settings.h"
#include "service/input/lock_free_ring.h"

namespace kvn::service {

enum class CommandKind : std::uint8_t {
    UseSettings,  // the newest ones
    Pause,
    LeaveSession,
    ReleaseMissed,
    Swapped,
    GestureEditBegin,
    GestureEditEnd,
    GestureEditForgotten,
    Question,
    WindowInFront,
    Reinstall,
    Quit,
};

struct Command {
    CommandKind kind = CommandKind::Quit;
    bool isOn = false;                                   // of Pause and Swapped
    model::ButtonSlot button = model::ButtonSlot::Left;  // of Question and ReleaseMissed
    std::uint32_t time = 0;                              // of Question
};

class Mailbox {
public:
    // For any thread but the hook's. False if the hook thread has read nothing for a long time.
    bool Put(const Command& command) {
        const std::lock_guard guard(lock);
        return PutPatiently(command);
    }

    bool PutSettings(const EngineSettings& settings) {
        const std::lock_guard guard(lock);
        slots[back] = settings;
        back = middle.exchange(back | kFresh) & ~kFresh;
        return PutPatiently({.kind = CommandKind::UseSettings});
    }

    // For the hook thread.
    bool Take(Command& command) { return commands.Take(command); }
    bool IsEmpty() const { return commands.IsEmpty(); }

    // The newest settings; null if they have already been read. They stay valid until the next call.
    const EngineSettings* TakeSettings() {
        if ((middle.load() & kFresh) == 0) return nullptr;
        front = middle.exchange(front) & ~kFresh;
        return &slots[front];
    }

private:
    static constexpr unsigned kFresh = 4;  // a flag beside the index of a slot
    static constexpr DWORD kPatienceMilliseconds = 500;

    bool PutPatiently(const Command& command) {
        const DWORD start = GetTickCount();
        while (!commands.Put(command)) {
            if (GetTickCount() - start >= kPatienceMilliseconds) return false;
            Sleep(1);
        }
        return true;
    }

    platform::CriticalSection lock;
    LockFreeRing<Command, 256> commands;
    // One slot is being filled, one is the newest, one is being read.
    std::array<EngineSettings, 3> slots{};
    unsigned back = 0;
    std::atomic<unsigned> middle = 1;
    unsigned front = 2;
};

}  // namespace kvn::service

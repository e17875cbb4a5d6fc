// The thread that owns the mouse hook and the engine, and does nothing else.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "service/engine/engine.h"
#include "service/input/mouse_activity.h"
#include "service/input/performer.h"
#include "service/input/press_feed.h"

namespace kvn::service {

class HookThread {
public:
    // Both are borrowed and must outlive the thread.
    HookThread(Performer& orderTaker, MouseActivity& mouseActivity);
    ~HookThread();  // ends what is held, removes the hook
    HookThread(const HookThread&) = delete;
    HookThread& operator=(const HookThread&) = delete;

    // False when the hook cannot be installed; the thread runs all the same, and Reinstall tries again.
    bool Start();

    // From any other thread; each takes effect before the next event of the mouse is decided.
    void Use(const EngineSettings& settings);
    void Pause(bool isPaused);
    void LeaveSession();
    void ReleaseMissed(model::ButtonSlot physicalButton);
    void Swapped(bool areSwapped);
    void GestureEditBegin();
    void GestureEditEnd();
    void GestureEditForgotten();
    void Question(model::ButtonSlot physicalButton);
    void WindowInFront();
    void Reinstall();

    bool IsInstalled() const;
    // Bit n: the physical button of slot n is down.
    std::uint32_t HeldButtons() const;
    bool IsGestureEdited() const;
    // Presses of buttons and pushes of tilts by the user, and the tick count of the last press of a button that the
    // hook saw.
    std::uint64_t PressCount() const;
    std::uint32_t LastPress() const;
    // The user's presses, for one thread that watches them.
    PressFeed& Presses();

private:
    class Loop;
    std::unique_ptr<Loop> loop;
};

}  // namespace kvn::service

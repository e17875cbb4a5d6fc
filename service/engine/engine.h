// Decides what becomes of each event of the mouse: pure, without heap memory, locks, clock or windows. One thread uses
// it.
//
// Times are milliseconds that wrap around as Windows' tick count does; places are pixels of the screen.
#pragma once

#include <cstdint>

#include "model/setting_field.h"
#include "model/stroke_recogniser.h"
#include "service/engine/engine_settings.h"
#include "service/engine/orders.h"

namespace kvn::service {

enum class MouseEventKind : std::uint8_t { Press, Release, Tilt, Wheel, Move };

struct MouseEvent {
    MouseEventKind kind = MouseEventKind::Move;
    model::ButtonSlot control = model::ButtonSlot::Left;  // of Press and Release: Left (the primary button) to Button5
    std::int32_t delta = 0;  // of Tilt (negative: left) and Wheel (negative: towards the user)
    model::ScreenPoint place;
    std::uint32_t time = 0;
    bool isInjected = false;  // made by a program, ours or another: passes and changes nothing
};

enum class Verdict : std::uint8_t { Pass, Keep };

class Engine {
public:
    Verdict OnMouse(const MouseEvent& event, Orders& orders);

    void OnSettings(const EngineSettings& settings, Orders& orders);
    void OnPause(bool isPaused, Orders& orders);
    // The session is locked or switched away, or the service ends: everything that is held ends, and no button counts
    // as held.
    void OnSessionLeft(Orders& orders);
    // While nobody takes orders (the worker hangs), new presses are natural.
    void OnOverload(bool isOverloaded);
    // The mouse's left and right button are swapped: Left is the physical right one.
    void OnSwapped(bool areSwapped);

    // The page's gesture editor, counted; Forget when no page is open any more.
    void OnGestureEditBegin(Orders& orders);
    void OnGestureEditEnd();
    void OnGestureEditForgotten();
    bool IsGestureEdited() const;

    // The page asks for a physical button. For 500 ms its presses are kept.
    void OnQuestion(model::ButtonSlot physicalButton, std::uint32_t time);
    // Bit n: the physical button of slot n is down.
    std::uint32_t HeldButtons() const;

    // While a stroke is under way: ten times a second, with the cursor's place.
    bool WantsTicks() const;
    void OnTick(model::ScreenPoint cursor, Orders& orders);

    // Another window came to the front.
    void OnWindowInFront(Orders& orders);
};

}  // namespace kvn::service

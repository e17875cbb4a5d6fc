// Decides about each event of the mouse: pure, without heap memory, locks, clock or windows. One thread uses
// it.
//
// Times are milliseconds that wrap around as Windows' tick count does; positions are pixels of the screen.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "model/setting_field.h"
#include "model/stroke_recogniser.h"
#include "service/engine/engine_settings.h"
#include "service/engine/flying_wheel.h"
#include "service/engine/orders.h"
#include "service/engine/page_questions.h"
#include "service/engine/press.h"
#include "service/engine/tilt_push.h"

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

class Engine {
public:
    Verdict OnMouse(const MouseEvent& event, Orders& orders);

    void OnSettings(const EngineSettings& next, Orders& orders);
    void OnPause(bool pauses, Orders& orders);
    // The session is locked or switched away, or the service ends: everything that is held ends, and no button counts
    // as held.
    void OnSessionLeft(Orders& orders);
    // While no thread takes orders, as when the worker hangs, new presses are natural.
    void OnOverload(bool overloaded);
    // A physical button is down since before the first event: its release passes.
    void OnHeldBefore(model::ButtonSlot physicalButton);
    // The hook missed the release of a physical button: what it held ends, and its press is forgotten.
    void OnReleaseMissed(model::ButtonSlot physicalButton, Orders& orders);
    // The mouse's left and right button are swapped: Left is the physical right one.
    void OnSwapped(bool areSwapped);

    // Count the open gesture editors of the page; Forget is for when no page is open any more.
    void OnGestureEditBegin(Orders& orders);
    void OnGestureEditEnd();
    void OnGestureEditForgotten();
    bool IsGestureEdited() const;

    // The page asks about a physical button. Its presses are kept for 500 ms.
    void OnQuestion(model::ButtonSlot physicalButton, std::uint32_t time);
    // Bit n: the physical button of slot n is down.
    std::uint32_t HeldButtons() const;

    // While a stroke is under way, call OnTick ten times a second with the cursor's position.
    bool WantsTicks() const;
    void OnTick(model::ScreenPoint cursor, Orders& orders);

    // Call it when another window has come to the front.
    void OnWindowInFront(Orders& orders);

    // Presses of buttons and pushes of tilts until now, by the user.
    std::uint64_t PressCount() const { return pressCount; }
    bool IsPaused() const { return isPaused; }
    // The number of the profile in force.
    std::uint32_t Profile() const { return settings.profile; }

private:
    using Handler = Verdict (Engine::*)(const MouseEvent&, Orders&);
    using Decision = Verdict (Engine::*)(Press&, const MouseEvent&, Orders&);

    Verdict OnPress(const MouseEvent& event, Orders& orders);
    Verdict OnRelease(const MouseEvent& event, Orders& orders);
    Verdict OnTilt(const MouseEvent& event, Orders& orders);
    Verdict OnWheel(const MouseEvent& event, Orders& orders);
    void Expire(std::uint32_t time);

    // Handles a press, by the kind of its function.
    Verdict Decide(Press& press, const MouseEvent& event, Orders& orders);
    Verdict Begin(Press& press, const MouseEvent& event, Orders& orders);
    Verdict Act(Press& press, const MouseEvent& event, Orders& orders);
    Verdict Draw(Press& press, const MouseEvent& event, Orders& orders);
    Verdict Swallow(Press& press, const MouseEvent& event, Orders& orders);
    Verdict KeepFor(const Press& press, Cause cause, Orders& orders);

    // A tilt.
    void BeginPush(model::ButtonSlot control);
    void Push(std::int32_t delta, bool isFirst, Orders& orders);
    void PushScroll(std::int32_t delta, bool isFirst, Orders& orders);
    void PushNotches(std::int32_t delta, bool isFirst, Orders& orders);

    // The stroke under way.
    bool IsDrawing() const { return stroke.IsTracking(); }
    void BeginStroke(model::ScreenPoint place, Orders& orders);
    void CompleteStroke(Orders& orders);
    void GiveStrokeUp(Orders& orders);
    void ActOnStroke(const model::GestureNotice& drawn, Orders& orders) const;
    const EngineGesture* FindGesture(const model::GestureNotice& drawn) const;

    // Endings.
    void End(Press& press, Orders& orders);
    void EndAll(Orders& orders);
    void EndFlight(Orders& orders);

    // From a physical button to its control, and back: left and right may be swapped.
    model::ButtonSlot ExchangedIfSwapped(model::ButtonSlot slot) const;
    std::size_t PhysicalOf(model::ButtonSlot control) const;
    Press PressOf(model::ButtonSlot control) const;
    std::uint32_t PassedButtonsBeside(const Press& press) const;
    Order OrderOf(const Press& press, OrderKind kind) const;
    // An order of the trail or of the flying wheel.
    Order PlainOrder(OrderKind kind, model::ScreenPoint place) const;

    EngineSettings settings;
    bool isPaused = false;
    bool isOverloaded = false;
    bool areButtonsSwapped = false;
    Ticket lastTicket = 0;
    std::uint32_t heldButtons = 0;
    std::uint64_t pressCount = 0;
    // By physical button, since the buttons may be swapped before the release.
    std::array<Press, kButtonCount> presses{};
    TiltPush push;
    PageQuestions page;
    model::StrokeRecogniser stroke;
    std::size_t drawingButton = 0;  // physical, while a stroke is under way
    FlyingWheel wheel;
};

}  // namespace kvn::service

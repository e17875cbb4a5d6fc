// An engine with a mouse whose events come 10 ms apart, and its orders.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

#include "service/engine/engine.h"
#include "tests/service_engine/order_text.h"
#include "tests/support/function_codes.h"

namespace kvn::service {

using enum model::ButtonSlot;
using enum test::Function;
using model::StrokeDirection;

class EngineTest : public testing::Test {
protected:
    EngineTest() {
        settings.controlCount = 7;
        settings.profile = 1;
        Apply();
    }

    // The orders since the last call.
    std::string Done() { return std::exchange(done, {}); }

    bool Keeps(const MouseEvent& event) {
        bool isKept = false;
        Collect([&](Orders& orders) { isKept = engine.OnMouse(event, orders) == Verdict::Keep; });
        return isKept;
    }

    MouseEvent Event(MouseEventKind kind) {
        MouseEvent event;
        event.kind = kind;
        event.place = place;
        event.time = now += 10;
        return event;
    }

    // True: the programs do not see it.
    bool Press(model::ButtonSlot control) { return Keeps(ButtonEvent(MouseEventKind::Press, control)); }
    bool Release(model::ButtonSlot control) { return Keeps(ButtonEvent(MouseEventKind::Release, control)); }
    bool Tilt(std::int32_t delta) { return Keeps(WheelEvent(MouseEventKind::Tilt, delta)); }
    bool Wheel(std::int32_t delta) { return Keeps(WheelEvent(MouseEventKind::Wheel, delta)); }

    MouseEvent ButtonEvent(MouseEventKind kind, model::ButtonSlot control) {
        MouseEvent event = Event(kind);
        event.control = control;
        return event;
    }
    MouseEvent WheelEvent(MouseEventKind kind, std::int32_t delta) {
        MouseEvent event = Event(kind);
        event.delta = delta;
        return event;
    }

    void Assign(model::ButtonSlot control, model::FunctionCode function, const model::EtcKey& keys = {}) {
        settings.functions[control] = function;
        settings.keys[control] = keys;
        Apply();
    }
    void AddGesture(std::initializer_list<StrokeDirection> stroke, model::FunctionCode function,
                    const model::EtcKey& keys = {}) {
        EngineGesture& gesture = settings.gestures[settings.gestureCount++];
        std::ranges::copy(stroke, gesture.stroke.begin());
        gesture.function = function;
        gesture.keys = keys;
        Apply();
    }
    void UseProfile(std::uint32_t profile) {
        settings.profile = profile;
        Apply();
    }
    void Apply() {
        Collect([&](Orders& orders) { engine.OnSettings(settings, orders); });
    }
    void Pause(bool isPaused) {
        Collect([&](Orders& orders) { engine.OnPause(isPaused, orders); });
    }
    void LeaveSession() {
        Collect([&](Orders& orders) { engine.OnSessionLeft(orders); });
    }
    void MissRelease(model::ButtonSlot button) {
        Collect([&](Orders& orders) { engine.OnReleaseMissed(button, orders); });
    }
    void BeginEdit() {
        Collect([&](Orders& orders) { engine.OnGestureEditBegin(orders); });
    }
    void ShowWindow() {
        Collect([&](Orders& orders) { engine.OnWindowInFront(orders); });
    }
    void MoveTo(std::int32_t x, std::int32_t y) {
        place = {x, y};
        Collect([&](Orders& orders) { engine.OnTick(place, orders); });
    }

    template <typename Call>
    void Collect(Call call) {
        Orders orders;
        call(orders);
        const std::string text = TextOf(orders);
        if (!text.empty()) done += (done.empty() ? "" : "; ") + text;
        for (const Order& order : orders.All()) last = order;
    }

    EngineSettings settings;
    Engine engine;
    model::ScreenPoint place{500, 500};
    std::uint32_t now = 1000;
    Order last;

private:
    std::string done;
};

}  // namespace kvn::service

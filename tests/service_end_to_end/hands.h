// The user's hands: real mouse and keyboard events, made by a program outside Windows.
#pragma once

#include <string>

#include "model/setting_field.h"
#include "tests/support/x_display.h"

namespace kvn::service_end_to_end {

class Hands {
public:
    // Buttons only: a tilt has no release. A tilt's press is one report.
    void Press(model::ButtonSlot control) const;
    void Release(model::ButtonSlot control) const;
    void Click(model::ButtonSlot control) const;
    // One notch.
    void TurnWheelUp() const { Order("click 4"); }
    void TurnWheelDown() const { Order("click 5"); }
    // Six notches towards the user (or away), this many times, with pauses in between.
    void FlickDown(int times) const { Order("flick 5 " + std::to_string(times)); }
    void FlickUp(int times) const { Order("flick 4 " + std::to_string(times)); }
    void MoveTo(POINT place) const;
    // By their X names: Shift_L, Control_L, F12, a.
    void HoldKey(const std::string& name) const { Order("keydown " + name); }
    void LetGoOfKey(const std::string& name) const { Order("keyup " + name); }
    void PressKey(const std::string& name) const;
    // Brings a window to the front, with the keyboard focus; throws StoryError if it does not come.
    void BringToFront(HWND window) const;
    // Whether the display would send a click to this window, and not to one that so far only Windows has closed.
    bool IsPointerOver(HWND window) const;
    void LetGoOfAll() const { Order("letgo"); }

    // The colours on the screen, as RRGGBB one after the other, row by row.
    std::string Pixels(const RECT& place) const { return display.Ask(PixelOrder(place)); }

private:
    static std::string PixelOrder(const RECT& place);
    void Order(const std::string& line) const;

    test::XDisplay display;
};

}  // namespace kvn::service_end_to_end

// The user's hands: real mouse and keyboard events, made by a program outside of Windows.
#pragma once

#include <winsock2.h>

#include <string>

#include "model/setting_field.h"
#include "platform/unique_resource.h"

namespace kvn::service_end_to_end {

class Hands {
public:
    // Connects to the program, which lets go of everything when the connection ends; throws StoryError when it is not
    // there.
    Hands();

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
    // Brings a window to the front, with the keyboard; throws StoryError when it does not come.
    void BringToFront(HWND window) const;
    // Whether the display gives a click to this window, and not to one that only Windows has closed already.
    bool IsPointerOver(HWND window) const;
    void LetGoOfAll() const { Order("letgo"); }

    // The colours on the screen, as RRGGBB one behind the other, row by row.
    std::string Pixels(const RECT& place) const { return Ask(PixelOrder(place)); }

private:
    static std::string PixelOrder(const RECT& place);
    void Order(const std::string& line) const;
    std::string Ask(const std::string& line) const;

    struct SocketTraits {
        using Handle = SOCKET;
        static constexpr Handle kEmpty = INVALID_SOCKET;
        static void Close(Handle opened) { closesocket(opened); }
    };
    using UniqueSocket = platform::UniqueResource<SocketTraits>;

    static UniqueSocket Connect();
    UniqueSocket connection;
};

}  // namespace kvn::service_end_to_end

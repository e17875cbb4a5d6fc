#include "tests/service_end_to_end/hands.h"

#include <array>
#include <cstdint>

#include "tests/end_to_end/story_waiting.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::StoryError;

// X numbers of the controls, in the order of ButtonSlot.
constexpr std::array<int, model::kButtonSlotCount> kNumbers{1, 3, 2, 8, 9, 6, 7};

std::string NumberOf(model::ButtonSlot control) {
    return std::to_string(kNumbers[static_cast<std::size_t>(control)]);
}

bool IsTilt(model::ButtonSlot control) {
    return control == model::ButtonSlot::TiltLeft || control == model::ButtonSlot::TiltRight;
}

// Wine stores the number of the X window here.
std::string DisplayNumberOf(HWND window) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(GetPropW(window, L"__wine_x11_whole_window")));
}

}  // namespace

void Hands::Press(model::ButtonSlot control) const {
    Order((IsTilt(control) ? "click " : "press ") + NumberOf(control));
}

void Hands::Release(model::ButtonSlot control) const {
    if (!IsTilt(control)) Order("release " + NumberOf(control));
}

void Hands::Click(model::ButtonSlot control) const {
    Press(control);
    Release(control);
}

void Hands::MoveTo(POINT place) const {
    Order("move " + std::to_string(place.x) + ' ' + std::to_string(place.y));
}

void Hands::PressKey(const std::string& name) const {
    HoldKey(name);
    LetGoOfKey(name);
}

void Hands::BringToFront(HWND window) const {
    // Wine alone would not move the keyboard focus, since it asks the display with the time of an old message. An
    // earlier message to another window may bring that one back to the front.
    constexpr int kSettledLooks = 3;
    int looks = 0;
    end_to_end::WaitFor("the window in front", [&] {
        if (GetForegroundWindow() != window) SetForegroundWindow(window);
        if (looks == 0 && display.Ask("focus " + DisplayNumberOf(window)) != "ok") return false;
        looks = GetForegroundWindow() == window ? looks + 1 : 0;
        return looks > kSettledLooks;
    });
}

bool Hands::IsPointerOver(HWND window) const {
    return display.Ask("under") == DisplayNumberOf(window);
}

std::string Hands::PixelOrder(const RECT& place) {
    return "pixels " + std::to_string(place.left) + ' ' + std::to_string(place.top) + ' ' +
           std::to_string(place.right - place.left) + ' ' + std::to_string(place.bottom - place.top);
}

void Hands::Order(const std::string& line) const {
    const std::string answer = display.Ask(line);
    if (answer != "ok") throw StoryError(line + ": " + answer);
}

}  // namespace kvn::service_end_to_end

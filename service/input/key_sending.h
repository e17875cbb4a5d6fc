// The only place that sends input. Keys carry both their virtual key and the scan code of the keyboard layout of the
// window in front.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace kvn::service {

// The virtual keys of the mouse's buttons, in the order of model::ButtonSlot.
inline constexpr std::array<WORD, 5> kButtonKeys{VK_LBUTTON, VK_RBUTTON, VK_MBUTTON, VK_XBUTTON1, VK_XBUTTON2};

// Input that arrives in one piece, with no other input in between. If it does not fit, it is sent in several pieces.
class InputBatch {
public:
    void KeyDown(WORD key);
    void KeyUp(WORD key);
    // VK_LBUTTON to VK_XBUTTON2, as physical buttons.
    void ButtonDown(WORD button);
    void ButtonUp(WORD button);
    // Amounts as the wheel reports them: 120 is a notch.
    void Wheel(std::int32_t amount);
    void HorizontalWheel(std::int32_t amount);

    // Sends the collected input; false if Windows does not accept all of it, as while a secure desktop is shown.
    bool Send();

private:
    void AddKey(WORD key, DWORD flags);
    void AddMouse(DWORD flags, std::int32_t data);
    void Add(const INPUT& input);

    std::array<INPUT, 48> inputs{};
    std::size_t count = 0;
    bool areAllSent = true;
};

// The physical button behind the one that the user sees: VK_LBUTTON is the primary button, which is the physical right
// one while the buttons are swapped.
WORD PhysicalButton(WORD button);

// Whether the virtual key is a button of the mouse.
bool IsMouseButton(WORD key);

}  // namespace kvn::service

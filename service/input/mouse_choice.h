// Chooses the attached mouse to publish: the one used last in a way in which no touchpad is used. Pure.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "service/input/mouse_description.h"

namespace kvn::service {

class MouseChoice {
public:
    // Windows' handle of a device.
    using Device = void*;

    // The buttons that were pressed on the mouse when it was attached before count from now on.
    void Attach(Device device, const MouseFacts& facts);
    void Detach(Device device);
    // At the start nobody knows which mouse will be used: the one with the most buttons.
    void ChooseMostCapable();
    // pressedButtons: bit n, the button of slot n went down. isUse: something other than moving, left and right. False
    // for a device that is no attached mouse.
    bool Take(Device device, std::uint32_t pressedButtons, bool isUse);

    // What to publish; nothing when no mouse was ever attached. The last one stays.
    std::optional<model::DeviceRecord> Chosen() const { return chosen; }

private:
    struct Mouse {
        Device device = nullptr;
        MouseFacts facts;
        std::uint32_t countedButtons = 0;
    };

    void Choose(const Mouse& mouse);

    std::vector<Mouse> mice;
    // By device name, those that are away included.
    std::map<std::wstring, std::uint32_t> pressedBefore;
    Device chosenDevice = nullptr;
    std::optional<model::DeviceRecord> chosen;
};

}  // namespace kvn::service

// Chooses the attached mouse to publish: the one that was last used in a way that excludes touchpads. Pure.
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

    // The buttons that were pressed on this mouse when it was attached earlier count again.
    void Attach(Device device, const MouseFacts& facts);
    void Detach(Device device);
    // Chooses the mouse with the most buttons. For the start, when no mouse has been used yet.
    void ChooseMostCapable();
    // pressedButtons: bit n, the button of slot n went down. isUse: something other than moving, left and right. False
    // if the device is not an attached mouse.
    bool Take(Device device, std::uint32_t pressedButtons, bool isUse);

    // The mouse to publish; nothing if none was ever attached. A detached mouse stays the chosen one.
    std::optional<model::DeviceRecord> Chosen() const { return chosen; }

private:
    struct Mouse {
        Device device = nullptr;
        MouseFacts facts;
        std::uint32_t countedButtons = 0;
    };

    void Choose(const Mouse& mouse);

    std::vector<Mouse> mice;
    // By device name, including detached ones.
    std::map<std::wstring, std::uint32_t> pressedBefore;
    Device chosenDevice = nullptr;
    std::optional<model::DeviceRecord> chosen;
};

}  // namespace kvn::service

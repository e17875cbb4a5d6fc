// The mice that Raw Input lists, and the one that was used last.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>

#include "model/device_record.h"
#include "service/input/mouse_choice.h"

namespace kvn::service {

struct ButtonChange {
    std::uint32_t pressed = 0;
    std::uint32_t released = 0;
    std::uint32_t time = 0;
};

// Used on the thread of the window that gets WM_INPUT and WM_INPUT_DEVICE_CHANGE.
class AttachedMice {
public:
    struct Outlets {
        std::function<void(const model::DeviceRecord&)> onMouse;  // the mouse to publish has changed
        // The user pressed or released buttons of a mouse; bit n: the physical button of slot n.
        std::function<void(const ButtonChange&)> onButtons;
    };

    explicit AttachedMice(Outlets chosenOutlets);

    // Registers the window for input of mice in the background and lists those that are attached.
    bool Watch(HWND window);
    void OnInput(HRAWINPUT input);
    void OnDeviceChange(WPARAM change, HANDLE device);

    // The mouse to publish; nothing if there never was one.
    const std::optional<model::DeviceRecord>& Current() const { return current; }

private:
    void List();
    void Attach(HANDLE device);
    void ReportChange();

    Outlets outlets;
    MouseChoice choice;
    std::optional<model::DeviceRecord> current;
};

}  // namespace kvn::service

// The mice that Windows lists by Raw Input, and which of them was used last.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/device_record.h"

namespace kvn::service {

// What Raw Input says of a mouse.
struct MouseFacts {
    std::wstring deviceName;
    std::uint32_t buttons = 0;
    bool hasHorizontalWheel = false;
};

struct MouseIds {
    std::uint16_t vid = 0;
    std::uint16_t pid = 0;

    friend bool operator==(const MouseIds&, const MouseIds&) = default;
};

// The ids of the device name, in the forms of USB and Bluetooth; 0xFFFF:0xFFFF when it has none, and in the place of
// ids of 0.
MouseIds IdsOfDeviceName(std::wstring_view deviceName);

// What is published of a mouse. pressedButtons: bit n, the button of slot n was pressed on it.
model::DeviceRecord DescribeMouse(const MouseFacts& facts, std::uint32_t pressedButtons);

// Used on one thread, the one of the window that gets WM_INPUT and WM_INPUT_DEVICE_CHANGE.
class AttachedMice {
public:
    struct Outlets {
        std::function<void(const model::DeviceRecord&)> onMouse;  // the mouse to publish has changed
        std::function<void(std::uint32_t time)> onPress;          // a button of any mouse was pressed by its user
    };

    explicit AttachedMice(Outlets chosenOutlets);

    // Registers the window for input of mice in the background and lists those that are attached.
    bool Watch(HWND window);
    void OnInput(HRAWINPUT input);
    void OnDeviceChange(WPARAM change, HANDLE device);

    // The mouse to publish; nothing when none was ever seen.
    const std::optional<model::DeviceRecord>& Current() const { return current; }

private:
    struct Mouse {
        HANDLE handle = nullptr;
        MouseFacts facts;
    };

    void List();
    void Arrive(HANDLE device);
    void Remove(HANDLE device);
    void TakeFlags(HANDLE device, std::uint32_t flags);
    void NotePressed(const Mouse& mouse, std::uint32_t buttons);
    void UseMostCapable();
    void Publish(const Mouse& mouse);
    model::DeviceRecord Describe(const Mouse& mouse) const;
    Mouse* Find(HANDLE device);

    Outlets outlets;
    std::optional<model::DeviceRecord> current;
    HANDLE currentDevice = nullptr;
    std::vector<Mouse> mice;
    // By device name, also of mice that are away: the buttons that were pressed until now, and until the last arrival.
    std::map<std::wstring, std::uint32_t> pressedButtons;
    std::map<std::wstring, std::uint32_t> countedButtons;
};

}  // namespace kvn::service

// The private protocol between the page and the resident service that drives the mouse: its window and the messages.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kvn::platform {

// The title of the service's top-level window; its class does not matter. The name of the service's program file begins
// with the same word, by which the page finds the service's folder.
inline constexpr wchar_t kServiceName[] = L"KvnMouseApl";

// Private window messages to the service. Every wParam is 0.
enum class ServiceMessage : std::uint32_t {
    SettingsChanged = 0x8002,   // posted after a successful apply
    Probe = 0x8003,             // sent; a reply of kProbeRefused means "not available"
    GestureEditBegin = 0x8005,  // sent when the gesture editor opens
    GestureEditEnd = 0x8006,    // posted when the gesture editor is destroyed
    IsButtonHeld = 0x8007,      // sent; lParam is one ServiceButton; a reply of 0 means "not held"
};

inline constexpr std::intptr_t kProbeRefused = -1;

// Button masks of IsButtonHeld.
enum class ServiceButton : std::uint32_t { Left = 1, Right = 2, Center = 4, Button4 = 8, Button5 = 16 };

}  // namespace kvn::platform

// The modal dialog "Register arbitrary key": up to three keys, pressed or picked from lists.
#pragma once

#include <windows.h>

#include <cstdint>

#include "model/etc_key.h"

namespace kvn::gestures {

// What the opener passes and gets back.
struct KeyCaptureRecord {
    model::EtcKey keys;
    HWND origin = nullptr;           // the opener's window
    std::uint32_t excludeShift = 0;  // bit 0: no Shift key may be chosen
};

// Runs the dialog with the origin as its owner. True when the user pressed OK; otherwise the opener keeps its own keys.
bool RunArbitraryKeyDialog(HINSTANCE module, KeyCaptureRecord& record);

}  // namespace kvn::gestures

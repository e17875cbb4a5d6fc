// The modal dialog "Register arbitrary key": up to three keys, pressed or picked from lists.
#pragma once

#include <windows.h>

#include <optional>

#include "model/etc_key.h"

namespace kvn::gestures {

enum class ShiftKeys : bool { Excluded, Offered };

// The input of the dialog.
struct KeyCaptureRequest {
    model::EtcKey keys;
    ShiftKeys shiftKeys = ShiftKeys::Offered;
};

// Runs the dialog above the owner. Returns the keys on OK; nothing on Cancel.
[[nodiscard]] std::optional<model::EtcKey> RunArbitraryKeyDialog(HINSTANCE module, HWND owner,
                                                                 const KeyCaptureRequest& request);

}  // namespace kvn::gestures

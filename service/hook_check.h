// Finds out whether the hook still sees the mouse: Windows removes a slow hook silently, but
// reports each press by Raw Input too.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>

#include "service/page/message_handler.h"

namespace kvn::service {

class HookCheck : public IMessageHandler {
public:
    struct Outlets {
        std::function<std::uint32_t()> lastPressOfHook;  // tick count
        std::function<void()> onBlind;                   // a second ago there was a press that the hook did not see
    };

    explicit HookCheck(Outlets chosenOutlets) : outlets(std::move(chosenOutlets)) {}
    virtual ~HookCheck() = default;

    // Raw Input reports a press; the window's timer looks at it a second later.
    void OnPress(HWND window, std::uint32_t time);

    std::optional<LRESULT> OnMessage(const Message& message) override;

private:
    void Judge(HWND window, std::uint32_t press);

    Outlets outlets;
    std::optional<std::uint32_t> pending;  // the time of the press that is looked at next
    std::uint32_t latest = 0;              // of the last press, which is checked after that
};

// Whether a hook that last saw a press at one time has missed the press at the other. The two reports of one press come
// close together.
bool HasMissed(std::uint32_t lastPressOfHook, std::uint32_t press);

}  // namespace kvn::service

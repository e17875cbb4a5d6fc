// Finds out whether the hook still sees the mouse: Windows removes a slow hook silently, but
// reports each press and release by Raw Input too.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <optional>

#include "service/engine/press.h"
#include "service/input/attached_mice.h"
#include "service/page/message_handler.h"

namespace kvn::service {

class HookCheck : public IMessageHandler {
public:
    struct Outlets {
        std::function<std::uint32_t()> lastPressOfHook;  // tick count
        std::function<std::uint32_t()> heldButtons;      // as the hook sees them; bit n: the button of slot n
        std::function<void()> onBlind;                   // the hook missed a press a second ago
        // This physical button went up three seconds ago, and the hook still counts it as held.
        std::function<void(model::ButtonSlot)> onReleaseMissed;
    };

    explicit HookCheck(Outlets chosenOutlets) : outlets(std::move(chosenOutlets)) {}
    virtual ~HookCheck() = default;

    // Call it for each report of Raw Input. Timers of the window check the buttons a second later.
    void OnButtons(HWND window, const ButtonChange& change);

    std::optional<LRESULT> OnMessage(const Message& message) override;

private:
    void OnPress(HWND window, std::uint32_t time);
    void JudgePress(HWND window);
    void AwaitReleases(HWND window);
    void JudgeReleases(HWND window);
    void ReportMissed(std::uint32_t missed) const;

    Outlets outlets;
    std::optional<std::uint32_t> pending;  // the time of the press that is checked next
    std::uint32_t latest = 0;              // the time of the last press, which is checked after that
    std::uint32_t released = 0;            // buttons that went up and may have been missed
    int looksLeft = 0;                     // how often these are still checked
};

// Whether a hook that saw its last press at `lastPressOfHook` has missed one at `press`. The two reports of one press
// come close together.
bool HasMissed(std::uint32_t lastPressOfHook, std::uint32_t press);

}  // namespace kvn::service

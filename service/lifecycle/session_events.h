// What Windows says of the session and the machine: locked, switched away and back, woken up, buttons swapped, ended.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "service/page/message_handler.h"

namespace kvn::service {

class SessionEvents : public IMessageHandler {
public:
    struct Outlets {
        std::function<void()> onLeft;      // locked or switched away
        std::function<void()> onReturned;  // unlocked or switched back
        std::function<void()> onResumed;   // the machine was asleep
        std::function<void(bool areSwapped)> onSwapped;
        std::function<void()> onEnd;  // the session ends, or an installer replaces the program
    };

    explicit SessionEvents(Outlets chosenOutlets) : outlets(std::move(chosenOutlets)) {}
    virtual ~SessionEvents() = default;

    // Asks Windows to send its messages to the window.
    static void Watch(HWND window);

    // False while the session is switched away: another one has the screen.
    bool IsActive() const { return isActive; }

    std::optional<LRESULT> OnMessage(const Message& message) override;

private:
    void OnSessionChange(WPARAM change);
    void OnPower(WPARAM event) const;

    Outlets outlets;
    bool isActive = true;
};

}  // namespace kvn::service

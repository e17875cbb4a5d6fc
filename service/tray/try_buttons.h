// "Try the buttons": the window has its own thread, so that neither waits for the other's menus and frames. The thread
// ends with the window.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/unique_resource.h"
#include "service/input/press_feed.h"

namespace kvn::service {

class TryButtons {
public:
    // Called on the window's thread.
    struct Outlets {
        std::function<std::wstring(std::uint32_t profile)> nameOfProfile;
        std::function<std::wstring()> programInFront;  // its path
    };

    // The feed is borrowed and must outlive this.
    TryButtons(PressFeed& feed, Outlets chosenOutlets);
    ~TryButtons();  // closes the window
    TryButtons(const TryButtons&) = delete;
    TryButtons& operator=(const TryButtons&) = delete;

    // Opens the window, or brings the one that is open to the front. False if it cannot be created.
    [[nodiscard]] bool Open();

private:
    struct State;
    static void Run(State& state);
    bool IsOpen() const;

    PressFeed& presses;
    Outlets outlets;
    std::shared_ptr<State> state;
    platform::UniqueKernelObject thread;
};

}  // namespace kvn::service

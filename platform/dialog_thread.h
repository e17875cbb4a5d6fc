// A dialog on its own thread: the program goes on, whatever the user does with the dialog.
#pragma once

#include <functional>
#include <memory>

namespace kvn::platform {

class DialogThread {
public:
    DialogThread();

    // Calls `show`, which returns when the dialog is closed. One at a time: if a dialog is open, it comes to the front
    // instead. Nothing waits for the thread, so it ends with the program.
    void Open(std::function<void()> show);

private:
    struct State;
    std::shared_ptr<State> state;
};

}  // namespace kvn::platform

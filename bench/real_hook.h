// Lets a hook of this program take what SendInput makes for the user's own, and nothing else changes: Windows calls it
// as it calls any hook. Every SetWindowsHookExW of the program is linked to this one.
#pragma once

namespace kvn::bench {

// While it lives, hooks that are installed find no mark of injected input on the events of button 4.
class HookOfUserInput {
public:
    HookOfUserInput();
    HookOfUserInput(const HookOfUserInput&) = delete;
    HookOfUserInput& operator=(const HookOfUserInput&) = delete;
    ~HookOfUserInput();
};

}  // namespace kvn::bench

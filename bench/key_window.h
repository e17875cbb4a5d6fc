// A window of another program, which records when a key reaches it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>

#include "platform/unique_resource.h"

namespace kvn::bench {

// The option that starts this program as the other one.
inline constexpr char kKeyWindowOption[] = "--key-window";

// The whole life of the other program.
void RunKeyWindow();

class KeyWindow {
public:
    // Starts the program and brings its window to the front.
    KeyWindow();
    KeyWindow(const KeyWindow&) = delete;
    KeyWindow& operator=(const KeyWindow&) = delete;
    ~KeyWindow();

    bool IsThere() const { return window != nullptr; }
    // When the next key went down or up, as a reading of the performance counter; nothing if none did for a long time.
    std::optional<std::int64_t> AwaitKey() const;

private:
    platform::UniqueKernelObject came;
    platform::UniqueKernelObject section;
    platform::Owned<void*, &UnmapViewOfFile> time;
    platform::UniqueKernelObject process;
    HWND window = nullptr;
};

}  // namespace kvn::bench

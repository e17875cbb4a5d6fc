// Asks windows of any process by messages. A window that does not answer within the patience ends the test.
#pragma once

#include <windows.h>

#include <cstddef>
#include <stdexcept>
#include <string>

#include "platform/unique_resource.h"
#include "tests/support/window_names.h"

namespace kvn::test {

// Thrown if a window cannot be asked; its text names the window.
class NoAnswer : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Memory in the process of a window: pointers in the messages of common controls do not work across processes.
class WindowMemory {
public:
    WindowMemory(HWND window, std::size_t bytes);
    WindowMemory(const WindowMemory&) = delete;
    WindowMemory& operator=(const WindowMemory&) = delete;
    ~WindowMemory();

    LPARAM Address() const { return reinterpret_cast<LPARAM>(address); }
    void WriteFrom(const void* copy) const;
    void ReadTo(void* copy) const;

private:
    platform::UniqueKernelObject process;
    void* address = nullptr;
    std::size_t size;
};

// Sends a message whose lParam points to this structure; returns the structure as the window leaves it.
template <typename Structure>
Structure Exchange(HWND window, UINT message, WPARAM wParam, Structure content) {
    const WindowMemory memory(window, sizeof content);
    memory.WriteFrom(&content);
    Send(window, message, wParam, memory.Address());
    memory.ReadTo(&content);
    return content;
}

}  // namespace kvn::test

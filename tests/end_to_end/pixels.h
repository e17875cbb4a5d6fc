// Reads the pixels of another process's window.
#pragma once

#include <windows.h>

#include <vector>

#include "platform/unique_resource.h"
#include "tests/end_to_end/pixel_probe.h"

namespace kvn::end_to_end {

struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> colours;  // row by row from the top

    friend bool operator==(const Pixels&, const Pixels&) = default;
};

// How many pixels differ; all of them when the sizes do.
std::size_t CountDifferences(const Pixels& left, const Pixels& right);

struct HookTraits {
    using Handle = HHOOK;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle hook) { UnhookWindowsHookEx(hook); }
};

// Stands in the thread of a window for as long as it lives.
class PixelReader {
public:
    // Throws StoryError.
    explicit PixelReader(HWND windowToRead);
    ~PixelReader();
    PixelReader(const PixelReader&) = delete;
    PixelReader& operator=(const PixelReader&) = delete;

    // The window's client area as it is painted now. Throws StoryError.
    Pixels Read() const;

private:
    HWND window;
    platform::UniqueKernelObject mapping;
    SharedPixels* shared = nullptr;
    platform::UniqueResource<HookTraits> hook;
};

}  // namespace kvn::end_to_end

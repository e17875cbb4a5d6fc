#include "tests/end_to_end/pixel_probe.h"

#include <algorithm>

#include "platform/device_context.h"
#include "platform/unique_resource.h"

namespace kvn::end_to_end {
namespace {

// The memory that the test program has made.
class View {
public:
    View() : mapping(OpenFileMappingW(FILE_MAP_WRITE, FALSE, kSharedPixels)) {
        if (!mapping) return;
        shared = static_cast<SharedPixels*>(MapViewOfFile(mapping.Get(), FILE_MAP_WRITE, 0, 0, sizeof(SharedPixels)));
    }
    ~View() {
        if (shared != nullptr) UnmapViewOfFile(shared);
    }
    View(const View&) = delete;
    View& operator=(const View&) = delete;
    SharedPixels* Get() const { return shared; }

private:
    platform::UniqueKernelObject mapping;
    SharedPixels* shared = nullptr;
};

// A copy of what a drawing context shows, row by row from the top.
class Bitmap {
public:
    Bitmap(HDC source, int bitmapWidth, int bitmapHeight)
        : width(bitmapWidth), height(bitmapHeight), memory(CreateCompatibleDC(source)) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        bitmap.Reset(CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    }

    bool Take(HDC source) const {
        if (!memory || !bitmap) return false;
        const platform::SelectedObject selected(memory.Get(), bitmap.Get());
        return BitBlt(memory.Get(), 0, 0, width, height, source, 0, 0, SRCCOPY) && GdiFlush();
    }
    const RGBQUAD* Pixels() const { return static_cast<const RGBQUAD*>(bits); }

private:
    int width;
    int height;
    platform::Owned<HDC, &DeleteDC> memory;
    platform::UniqueBitmap bitmap;
    void* bits = nullptr;
};

void CopyPixels(HWND window) {
    const View view;
    RECT area{};
    if (view.Get() == nullptr || !GetClientRect(window, &area)) return;
    SharedPixels& shared = *view.Get();
    if (static_cast<std::size_t>(area.right) * static_cast<std::size_t>(area.bottom) > kMaxPixels) return;

    // What is still to be painted belongs to the picture.
    UpdateWindow(window);
    const platform::WindowDeviceContext source(window);
    const Bitmap copy(source.Get(), area.right, area.bottom);
    if (!copy.Take(source.Get())) return;
    const auto count = static_cast<std::ptrdiff_t>(area.right) * area.bottom;
    std::transform(copy.Pixels(), copy.Pixels() + count, shared.pixels.begin(),
                   [](const RGBQUAD& pixel) { return RGB(pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue); });
    shared.width = area.right;
    shared.height = area.bottom;
}

}  // namespace
}  // namespace kvn::end_to_end

extern "C" __declspec(dllexport) LRESULT CALLBACK OnMessage(int code, WPARAM wParam, LPARAM lParam) {
    static const UINT readPixels = RegisterWindowMessageW(kvn::end_to_end::kReadPixelsMessage);
    const auto& call = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code == HC_ACTION && call.message == readPixels) kvn::end_to_end::CopyPixels(call.hwnd);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

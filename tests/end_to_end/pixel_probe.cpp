#include "tests/end_to_end/pixel_probe.h"

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

void CopyPixels(HWND window) {
    const View view;
    RECT area{};
    if (view.Get() == nullptr || !GetClientRect(window, &area)) return;
    SharedPixels& shared = *view.Get();
    if (static_cast<std::size_t>(area.right) * static_cast<std::size_t>(area.bottom) > kMaxPixels) return;

    // What is still to be painted belongs to the picture.
    UpdateWindow(window);
    const HDC context = GetDC(window);
    std::size_t next = 0;
    for (int y = 0; y < area.bottom; ++y) {
        for (int x = 0; x < area.right; ++x) shared.pixels[next++] = GetPixel(context, x, y);
    }
    ReleaseDC(window, context);
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

#include "service/tray/window_dpi.h"

#include "platform/device_context.h"
#include "platform/system_library.h"

namespace kvn::service {
namespace {

// Windows has had these since version 10.
using GetWindowDpi = UINT WINAPI(HWND);
using GetParametersForDpi = BOOL WINAPI(UINT, UINT, void*, UINT, UINT);

constexpr wchar_t kUser[] = L"user32.dll";

UINT DpiOfSystem() {
    const platform::WindowDeviceContext screen(nullptr);
    return screen ? static_cast<UINT>(GetDeviceCaps(screen.Get(), LOGPIXELSY)) : kPlainDpi;
}

bool ReadMetrics(NONCLIENTMETRICSW& metrics, UINT dpi) {
    metrics.cbSize = sizeof metrics;
    auto* const read = platform::SystemFunction<GetParametersForDpi>(kUser, "SystemParametersInfoForDpi");
    if (read != nullptr && read(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi)) return true;
    if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return false;
    LONG& height = metrics.lfMessageFont.lfHeight;
    height = MulDiv(height, static_cast<int>(dpi), static_cast<int>(DpiOfSystem()));
    return true;
}

}  // namespace

UINT DpiOf(HWND window) {
    auto* const ask = platform::SystemFunction<GetWindowDpi>(kUser, "GetDpiForWindow");
    const UINT dpi = ask == nullptr ? 0 : ask(window);
    return dpi == 0 ? DpiOfSystem() : dpi;
}

UniqueFont MessageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics{};
    return ReadMetrics(metrics, dpi) ? UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont)) : UniqueFont();
}

}  // namespace kvn::service

#include "tools/control_panel/picture.h"

#include <objidl.h>

#include <gdiplus.h>

#include "tools/control_panel/host_error.h"
#include "tools/control_panel/owned.h"

namespace kvn::control_panel {
namespace {

constexpr int kBytesPerPixel = sizeof(std::uint32_t);

class GdiPlus {
public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) {
            throw HostError{L"GDI+ cannot be started."};
        }
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(token); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

private:
    ULONG_PTR token = 0;
};

CLSID FindPngEncoder() {
    UINT count = 0;
    UINT bytes = 0;
    Gdiplus::GetImageEncodersSize(&count, &bytes);
    // The encoders' texts follow the records within the same block of `bytes` bytes.
    std::vector<Gdiplus::ImageCodecInfo> encoders(bytes / sizeof(Gdiplus::ImageCodecInfo) + 1);
    if (count > 0 && Gdiplus::GetImageEncoders(count, bytes, encoders.data()) == Gdiplus::Ok) {
        for (UINT index = 0; index < count; ++index) {
            if (encoders[index].MimeType == std::wstring(L"image/png")) return encoders[index].Clsid;
        }
    }
    throw HostError{L"GDI+ has no PNG encoder."};
}

}  // namespace

Picture CopyScreen(const RECT& rectangle) {
    Picture picture{rectangle.right - rectangle.left, rectangle.bottom - rectangle.top, {}};
    picture.pixels.resize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));

    const ScreenDc screen(GetDC(nullptr));
    const MemoryDc memory(CreateCompatibleDC(screen.Get()));
    const platform::UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), picture.width, picture.height));
    const HGDIOBJ before = SelectObject(memory.Get(), bitmap.Get());
    const BOOL copied = BitBlt(memory.Get(), 0, 0, picture.width, picture.height, screen.Get(), rectangle.left,
                               rectangle.top, SRCCOPY | CAPTUREBLT);
    SelectObject(memory.Get(), before);

    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof(format.bmiHeader);
    format.bmiHeader.biWidth = picture.width;
    format.bmiHeader.biHeight = -picture.height;  // negative: rows from the top
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 8 * kBytesPerPixel;
    format.bmiHeader.biCompression = BI_RGB;
    if (!copied || GetDIBits(memory.Get(), bitmap.Get(), 0, static_cast<UINT>(picture.height), picture.pixels.data(),
                             &format, DIB_RGB_COLORS) == 0) {
        throw HostError{L"The screen cannot be copied."};
    }
    return picture;
}

void SavePng(const Picture& picture, const std::wstring& file) {
    const GdiPlus gdiPlus;
    std::vector<std::uint32_t> pixels = picture.pixels;  // GDI+ needs writable memory
    Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * kBytesPerPixel, PixelFormat32bppRGB,
                           reinterpret_cast<BYTE*>(pixels.data()));
    const CLSID encoder = FindPngEncoder();
    if (bitmap.Save(file.c_str(), &encoder, nullptr) != Gdiplus::Ok) {
        throw HostError{L"The picture cannot be written to " + file + L"."};
    }
}

}  // namespace kvn::control_panel

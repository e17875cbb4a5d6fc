// Pictures that tests use in place of the mouse's.
#pragma once

#include <windows.h>

#include <gdiplus.h>

#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

// A square PNG of one colour.
inline void WritePng(const std::wstring& path, Gdiplus::ARGB colour) {
    namespace gdi = Gdiplus::DllExports;
    constexpr CLSID kPngEncoder = {0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    constexpr int kSize = 8;
    platform::Owned<ULONG_PTR, &Gdiplus::GdiplusShutdown> session;
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(session.Receive(), &input, nullptr);
    platform::Owned<Gdiplus::GpBitmap*, &gdi::GdipDisposeImage> bitmap;
    gdi::GdipCreateBitmapFromScan0(kSize, kSize, 0, PixelFormat32bppARGB, nullptr, bitmap.Receive());
    {
        platform::Owned<Gdiplus::GpGraphics*, &gdi::GdipDeleteGraphics> graphics;
        gdi::GdipGetImageGraphicsContext(bitmap.Get(), graphics.Receive());
        gdi::GdipGraphicsClear(graphics.Get(), colour);
    }
    gdi::GdipSaveImageToFile(bitmap.Get(), path.c_str(), &kPngEncoder, nullptr);
}

}  // namespace kvn::test

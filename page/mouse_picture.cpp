#include "page/mouse_picture.h"

#include <objidl.h>

#include <algorithm>
#include <utility>
// GDI+'s headers use min and max unqualified.
namespace Gdiplus {
using std::max;  // NOLINT(misc-unused-using-decls)
using std::min;  // NOLINT(misc-unused-using-decls)
}  // namespace Gdiplus
#include <gdiplus.h>

namespace kvn::page {
namespace {

namespace gdi = Gdiplus::DllExports;

constexpr Gdiplus::ARGB kOpaqueBlack = 0xFF000000;

struct GraphicsTraits {
    using Handle = Gdiplus::GpGraphics*;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle graphics) { gdi::GdipDeleteGraphics(graphics); }
};

struct GdiplusBitmapTraits {
    using Handle = Gdiplus::GpBitmap*;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle bitmap) { gdi::GdipDisposeImage(bitmap); }
};

Gdiplus::ARGB DialogColour() {
    const COLORREF colour = GetSysColor(COLOR_BTNFACE);
    return kOpaqueBlack | static_cast<Gdiplus::ARGB>(GetRValue(colour)) << 16 |
           static_cast<Gdiplus::ARGB>(GetGValue(colour)) << 8 | GetBValue(colour);
}

// Puts the bitmap into the control and deletes the one that was there.
void ReplaceBitmap(HWND control, platform::UniqueBitmap bitmap) {
    const HBITMAP shown = bitmap.Get();
    const auto previous =
        reinterpret_cast<HBITMAP>(SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(shown)));
    if (previous != nullptr) DeleteObject(previous);
    // Version 6 of the common controls shows a copy of a bitmap with an alpha channel; ours is then still ours.
    const bool isKept = SendMessageW(control, STM_GETIMAGE, IMAGE_BITMAP, 0) == reinterpret_cast<LRESULT>(shown);
    if (isKept) bitmap.Release();
}

}  // namespace

void GdiplusTraits::Close(Handle token) {
    Gdiplus::GdiplusShutdown(token);
}

void GdiplusImageTraits::Close(Handle image) {
    gdi::GdipDisposeImage(image);
}

MousePicture::MousePicture(HWND targetControl, std::wstring imageFile)
    : target(targetControl), file(std::move(imageFile)) {
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(gdiplus.Receive(), &input, nullptr) != Gdiplus::Ok) gdiplus.Release();
}

void MousePicture::Draw() {
    Load();
    RECT area{};
    if (!gdiplus || !GetClientRect(target, &area) || IsRectEmpty(&area)) return;
    if (platform::UniqueBitmap bitmap = Render(area.right, area.bottom)) ReplaceBitmap(target, std::move(bitmap));
}

void MousePicture::Load() {
    if (isLoaded || !gdiplus) return;
    isLoaded = true;
    if (gdi::GdipLoadImageFromFile(file.c_str(), image.Receive()) != Gdiplus::Ok) image.Release();
}

platform::UniqueBitmap MousePicture::Render(int width, int height) const {
    platform::UniqueResource<GdiplusBitmapTraits> canvas;
    if (gdi::GdipCreateBitmapFromScan0(width, height, 0, PixelFormat32bppARGB, nullptr, canvas.Receive()) !=
        Gdiplus::Ok) {
        return {};
    }
    {
        platform::UniqueResource<GraphicsTraits> graphics;
        if (gdi::GdipGetImageGraphicsContext(canvas.Get(), graphics.Receive()) != Gdiplus::Ok) return {};
        gdi::GdipGraphicsClear(graphics.Get(), DialogColour());
        if (image) {
            gdi::GdipSetInterpolationMode(graphics.Get(), Gdiplus::InterpolationModeHighQualityBicubic);
            gdi::GdipDrawImageRectI(graphics.Get(), image.Get(), 0, 0, width, height);
        }
    }
    platform::UniqueBitmap bitmap;
    if (gdi::GdipCreateHBITMAPFromBitmap(canvas.Get(), bitmap.Receive(), kOpaqueBlack) != Gdiplus::Ok) return {};
    return bitmap;
}

void ClearPicture(HWND control) {
    ReplaceBitmap(control, {});
}

}  // namespace kvn::page

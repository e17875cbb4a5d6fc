#include "page/mouse_picture.h"

#include <objidl.h>

#include <gdiplus.h>

#include <utility>

namespace kvn::page {
namespace {

namespace gdi = Gdiplus::DllExports;

constexpr Gdiplus::ARGB kOpaqueBlack = 0xFF000000;

void DeleteGraphics(Gdiplus::GpGraphics* graphics) {
    gdi::GdipDeleteGraphics(graphics);
}
void DisposeBitmap(Gdiplus::GpBitmap* bitmap) {
    gdi::GdipDisposeImage(bitmap);
}

Gdiplus::ARGB DialogColour() {
    const COLORREF colour = GetSysColor(COLOR_BTNFACE);
    return kOpaqueBlack | static_cast<Gdiplus::ARGB>(GetRValue(colour)) << 16 |
           static_cast<Gdiplus::ARGB>(GetGValue(colour)) << 8 | GetBValue(colour);
}

// Puts the bitmap into the control and deletes the previous one.
void ReplaceBitmap(HWND control, platform::UniqueBitmap bitmap) {
    const HBITMAP shown = bitmap.Get();
    const auto previous =
        reinterpret_cast<HBITMAP>(SendMessageW(control, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(shown)));
    if (previous != nullptr) DeleteObject(previous);
    // Version 6 of the common controls shows a copy of a bitmap with an alpha channel; then the original is still ours
    // to delete.
    const bool isKept = SendMessageW(control, STM_GETIMAGE, IMAGE_BITMAP, 0) == reinterpret_cast<LRESULT>(shown);
    if (isKept) bitmap.Release();
}

}  // namespace

void ShutDownGdiplus(ULONG_PTR token) {
    Gdiplus::GdiplusShutdown(token);
}

void DisposeImage(Gdiplus::GpImage* image) {
    gdi::GdipDisposeImage(image);
}

GdiplusSession::GdiplusSession() {
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(token.Receive(), &input, nullptr) != Gdiplus::Ok) token.Release();
}

MousePicture::MousePicture(HWND targetControl, std::wstring imageFile)
    : target(targetControl), file(std::move(imageFile)) {}

void MousePicture::Draw() {
    Load();
    RECT area{};
    if (!GetClientRect(target, &area) || IsRectEmpty(&area)) return;
    if (platform::UniqueBitmap bitmap = Render(area.right, area.bottom)) ReplaceBitmap(target, std::move(bitmap));
}

void MousePicture::Load() {
    if (isLoaded) return;
    isLoaded = true;
    if (gdi::GdipLoadImageFromFile(file.c_str(), image.Receive()) != Gdiplus::Ok) image.Release();
}

platform::UniqueBitmap MousePicture::Render(int width, int height) const {
    platform::Owned<Gdiplus::GpBitmap*, &DisposeBitmap> canvas;
    if (gdi::GdipCreateBitmapFromScan0(width, height, 0, PixelFormat32bppARGB, nullptr, canvas.Receive()) !=
        Gdiplus::Ok) {
        return {};
    }
    {
        platform::Owned<Gdiplus::GpGraphics*, &DeleteGraphics> graphics;
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

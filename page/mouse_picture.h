// A picture of the mouse, drawn into a static control.
#pragma once

#include <windows.h>

#include <string>

#include "platform/unique_resource.h"

// The flat interface's own handle types; its headers are heavy.
namespace Gdiplus {
class GpImage;
}

namespace kvn::page {

struct GdiplusTraits {
    using Handle = ULONG_PTR;
    static constexpr Handle kEmpty = 0;
    static void Close(Handle token);
};

struct GdiplusImageTraits {
    using Handle = Gdiplus::GpImage*;
    static constexpr Handle kEmpty = nullptr;
    static void Close(Handle image);
};

// Starts GDI+ for itself. A file that cannot be loaded leaves the picture empty.
class MousePicture {
public:
    MousePicture(HWND targetControl, std::wstring imageFile);

    // Draws the picture, stretched over the control's whole area, on the colour of dialogs; that colour alone when the
    // picture is empty. The control's bitmap before it is deleted.
    void Draw();

private:
    // Most pictures of a page are never looked at: each is loaded when it is drawn for the first time.
    void Load();
    platform::UniqueBitmap Render(int width, int height) const;

    HWND target;
    std::wstring file;
    bool isLoaded = false;
    // In this order: the image must go before GDI+ shuts down.
    platform::UniqueResource<GdiplusTraits> gdiplus;
    platform::UniqueResource<GdiplusImageTraits> image;
};

// Takes the bitmap that Draw left in the control and deletes it.
void ClearPicture(HWND control);

}  // namespace kvn::page

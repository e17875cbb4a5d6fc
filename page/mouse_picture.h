// A picture of the mouse, drawn into a static control.
#pragma once

#include <windows.h>

#include <string>

#include "platform/unique_resource.h"

// GDI+'s headers are large: its type of an image handle is enough here.
namespace Gdiplus {
class GpImage;
}

namespace kvn::page {

void ShutDownGdiplus(ULONG_PTR token);
void DisposeImage(Gdiplus::GpImage* image);

// Starts GDI+ for its own lifetime. False if it could not be started.
class [[nodiscard]] GdiplusSession {
public:
    GdiplusSession();
    explicit operator bool() const { return static_cast<bool>(token); }

private:
    platform::Owned<ULONG_PTR, &ShutDownGdiplus> token;
};

// Must be drawn and destroyed within a session. If its file cannot be loaded, the picture is empty.
class MousePicture {
public:
    MousePicture(HWND targetControl, std::wstring imageFile);

    // Draws the picture, stretched over the control's whole area, on the colour of dialogs; that colour alone if the
    // picture is empty. Deletes the control's previous bitmap.
    void Draw();

private:
    // Most pictures of a page are never shown, so each is loaded when it is drawn for the first time.
    void Load();
    platform::UniqueBitmap Render(int width, int height) const;

    HWND target;
    std::wstring file;
    bool isLoaded = false;
    platform::Owned<Gdiplus::GpImage*, &DisposeImage> image;
};

// Takes the bitmap that Draw left in the control and deletes it.
void ClearPicture(HWND control);

}  // namespace kvn::page

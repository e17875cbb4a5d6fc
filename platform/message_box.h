// Message boxes with texts of the string table.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

class MessageBoxes {
public:
    MessageBoxes(HINSTANCE textModule, UINT textIdOfCaption) : module(textModule), captionId(textIdOfCaption) {}

    // Shows the text with MessageBoxW's style bits and returns MessageBoxW's answer; shows nothing and returns 0 when
    // the text or the caption cannot be loaded.
    int Show(HWND owner, UINT textId, UINT style) const;

    // The same for a text that was put together.
    int ShowText(HWND owner, const std::wstring& text, UINT style) const;

    // Tells the user of a refusal or a failure.
    void Warn(HWND owner, UINT textId) const;
    void WarnText(HWND owner, const std::wstring& text) const;

    // Whether the user wants to delete what is selected.
    [[nodiscard]] bool ConfirmDeletion(HWND owner) const;

    // The shared check before an item is added to a list of so many items: below the limit it answers true, at the
    // limit it tells the user and answers false.
    [[nodiscard]] bool AllowsAnotherItem(HWND owner, int itemCount) const;

private:
    HINSTANCE module;
    UINT captionId;
};

}  // namespace kvn::platform

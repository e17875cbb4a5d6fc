// Message boxes with texts of the string table.
#pragma once

#include <windows.h>

#include <string>

namespace kvn::platform {

class MessageBoxes {
public:
    MessageBoxes(HINSTANCE textModule, UINT textIdOfCaption) : module(textModule), captionId(textIdOfCaption) {}

    // Shows the text with MessageBoxW's style bits and returns MessageBoxW's answer; shows nothing and returns 0 if the
    // text or the caption cannot be loaded.
    int Show(HWND owner, UINT textId, UINT style) const;

    // The same for a composed text.
    int ShowText(HWND owner, const std::wstring& text, UINT style) const;

    // Reports a refusal or a failure to the user.
    void Warn(HWND owner, UINT textId) const;
    void WarnText(HWND owner, const std::wstring& text) const;

    // Asks whether to delete the selection.
    [[nodiscard]] bool ConfirmDeletion(HWND owner) const;

    // The shared check before an item is added to a list of `itemCount` items: true below the limit; at the limit it
    // shows a message and returns false.
    [[nodiscard]] bool AllowsAnotherItem(HWND owner, int itemCount) const;

private:
    HINSTANCE module;
    UINT captionId;
};

}  // namespace kvn::platform

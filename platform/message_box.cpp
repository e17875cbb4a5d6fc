#include "platform/message_box.h"

#include <array>
#include <cwchar>
#include <optional>

#include "resources/resource.h"

namespace kvn::platform {
namespace {

// Every list that the user extends holds at most so many items.
constexpr int kItemLimit = 100;

// Longer texts are cut.
using TextBuffer = std::array<wchar_t, 1024>;

std::optional<TextBuffer> Load(HINSTANCE module, UINT textId) {
    TextBuffer text{};
    if (LoadStringW(module, textId, text.data(), static_cast<int>(text.size())) == 0) return std::nullopt;
    return text;
}

}  // namespace

int MessageBoxes::Show(HWND owner, UINT textId, UINT style) const {
    const auto text = Load(module, textId);
    return text ? ShowText(owner, text->data(), style) : 0;
}

int MessageBoxes::ShowText(HWND owner, const std::wstring& text, UINT style) const {
    const auto caption = Load(module, captionId);
    return caption ? MessageBoxW(owner, text.c_str(), caption->data(), style) : 0;
}

bool MessageBoxes::AllowsAnotherItem(HWND owner, int itemCount) const {
    if (itemCount < kItemLimit) return true;
    if (const auto format = Load(module, IDS_ITEM_LIMIT)) {
        std::wstring text = format->data();
        const std::size_t place = text.find(L"%d");
        if (place != std::wstring::npos) text.replace(place, 2, std::to_wstring(kItemLimit));
        ShowText(owner, text, MB_OK | MB_ICONEXCLAMATION);
    }
    return false;
}

}  // namespace kvn::platform

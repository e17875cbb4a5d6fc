#include "platform/message_box.h"

#include "platform/item_limit.h"
#include "platform/number_text.h"
#include "platform/texts.h"
#include "resources/resource.h"

namespace kvn::platform {
namespace {

// Longer texts and captions of the string table are cut.
constexpr std::size_t kMaxTextLength = 1023;

std::wstring Load(HINSTANCE module, UINT textId) {
    return LoadText(module, textId).substr(0, kMaxTextLength);
}

}  // namespace

int MessageBoxes::Show(HWND owner, UINT textId, UINT style) const {
    const std::wstring text = Load(module, textId);
    return text.empty() ? 0 : ShowText(owner, text, style);
}

int MessageBoxes::ShowText(HWND owner, const std::wstring& text, UINT style) const {
    const std::wstring caption = Load(module, captionId);
    return caption.empty() ? 0 : MessageBoxW(owner, text.c_str(), caption.c_str(), style);
}

void MessageBoxes::Warn(HWND owner, UINT textId) const {
    Show(owner, textId, MB_OK | MB_ICONEXCLAMATION);
}

void MessageBoxes::WarnText(HWND owner, const std::wstring& text) const {
    ShowText(owner, text, MB_OK | MB_ICONEXCLAMATION);
}

bool MessageBoxes::ConfirmDeletion(HWND owner) const {
    return Show(owner, IDS_CONFIRM_DELETE, MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

bool MessageBoxes::AllowsAnotherItem(HWND owner, int itemCount) const {
    if (itemCount < kItemLimit) return true;
    std::wstring text = Load(module, IDS_ITEM_LIMIT);
    const std::size_t place = text.find(L"%d");
    if (place != std::wstring::npos) text.replace(place, 2, NumberText(kItemLimit));
    if (!text.empty()) WarnText(owner, text);
    return false;
}

}  // namespace kvn::platform

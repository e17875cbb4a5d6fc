#include "platform/texts.h"

namespace kvn::platform {

std::wstring LoadText(HINSTANCE module, UINT textId) {
    // With a buffer size of 0, LoadStringW returns a pointer to the text in the module, which has no final zero.
    const wchar_t* text = nullptr;
    const int length = LoadStringW(module, textId, reinterpret_cast<wchar_t*>(&text), 0);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

}  // namespace kvn::platform

#include "platform/window_text.h"

#include <array>
#include <utility>

namespace kvn::platform {

std::wstring CutText(std::wstring text, int maxLength) {
    const auto length = static_cast<std::size_t>(maxLength);
    if (text.size() <= length) return text;
    text.resize(length);
    if (!text.empty() && IS_HIGH_SURROGATE(text.back())) text.pop_back();
    return text;
}

std::wstring WindowText(HWND window, int maxLength) {
    // One more than requested, to see whether the text was cut: only then must it not end with half a surrogate pair.
    std::wstring text(static_cast<std::size_t>(maxLength) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return CutText(std::move(text), maxLength);
}

std::wstring ClassNameOf(HWND window) {
    constexpr int kLongestClassName = 256;
    std::array<wchar_t, kLongestClassName + 1> name{};
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return {name.data(), static_cast<std::size_t>(length)};
}

}  // namespace kvn::platform

#include "service/resources/service_texts.h"

#include <windows.h>

#include "platform/module.h"
#include "platform/texts.h"

namespace kvn::service {
namespace {

void Fill(std::wstring& text, std::wstring_view mark, std::wstring_view value) {
    const std::size_t place = text.find(mark);
    if (place != std::wstring::npos) text.replace(place, mark.size(), value);
}

bool WriteTo(HANDLE output, std::wstring_view text) {
    if (output == nullptr || output == INVALID_HANDLE_VALUE) return false;
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(output, &mode)) {
        return WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != FALSE;
    }
    const std::string bytes = Utf8(text);
    return WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != FALSE;
}

}  // namespace

std::wstring Text(unsigned textId) {
    return platform::LoadText(platform::ThisModule(), textId);
}

// The second first, so that a mark inside the first value stays as it is.
std::wstring Text(unsigned textId, std::wstring_view first, std::wstring_view second) {
    std::wstring text = Text(textId);
    Fill(text, L"%2", second);
    Fill(text, L"%1", first);
    return text;
}

std::string Utf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), bytes, nullptr, nullptr);
    return utf8;
}

void Print(std::wstring_view text) {
    if (text.empty() || WriteTo(GetStdHandle(STD_OUTPUT_HANDLE), text)) return;
    // A program without a console of its own has no output until it attaches to its parent's.
    if (AttachConsole(ATTACH_PARENT_PROCESS)) WriteTo(GetStdHandle(STD_OUTPUT_HANDLE), text);
}

}  // namespace kvn::service

#include "service/resources/service_texts.h"

#include <windows.h>

#include <algorithm>

#include "platform/module.h"
#include "platform/texts.h"
#include "platform/unique_resource.h"

namespace kvn::service {
namespace {

// The inserted text is not searched again: it may contain %1 or %2 itself.
std::wstring Filled(const std::wstring& text, std::wstring_view first, std::wstring_view second) {
    std::wstring filled;
    for (std::size_t place = 0; place < text.size();) {
        const std::wstring_view mark = std::wstring_view(text).substr(place, 2);
        const bool isMark = mark == L"%1" || mark == L"%2";
        filled += isMark ? (mark == L"%1" ? first : second) : mark.substr(0, 1);
        place += isMark ? 2 : 1;
    }
    return filled;
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

// Leaves the console again, since the program would end with it. Under Wine the program has it from the start.
void WriteToParentsConsole(std::wstring_view text) {
    const bool isAttached = AttachConsole(ATTACH_PARENT_PROCESS) != FALSE;
    const platform::UniqueFile console(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                                   FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                                   nullptr));
    WriteTo(console.Get(), text);
    if (isAttached) FreeConsole();
}

}  // namespace

std::wstring Text(unsigned textId) {
    return platform::LoadText(platform::ThisModule(), textId);
}

std::wstring Text(unsigned textId, std::wstring_view first, std::wstring_view second) {
    return Filled(Text(textId), first, second);
}

std::wstring OnOneLine(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t character) { return character < L' ' || character == L'\x7F'; }, L' ');
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
    WriteToParentsConsole(text);
}

}  // namespace kvn::service

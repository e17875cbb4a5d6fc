#include "tools/control_panel/host_error.h"

#include <windows.h>

#include <cwchar>

#include "tools/control_panel/owned.h"

namespace kvn::control_panel {

std::wstring DescribeError(unsigned long error) {
    LocalText<wchar_t*> message;
    // With FORMAT_MESSAGE_ALLOCATE_BUFFER the buffer parameter takes the address of a pointer instead.
    FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS |
                       FORMAT_MESSAGE_MAX_WIDTH_MASK,
                   nullptr, error, 0, reinterpret_cast<wchar_t*>(message.Receive()), 0, nullptr);
    std::wstring text(message ? message.Get() : L"error");
    text.erase(text.find_last_not_of(L" .\r\n") + 1);
    wchar_t number[16];
    static_cast<void>(std::swprintf(number, std::size(number), L" (0x%lX)", error));
    return text + number;
}

void WriteErrorLine(const std::wstring& text) {
    const std::wstring line = text + L"\n";
    const int length = static_cast<int>(line.size());
    std::string bytes(line.size() * 3, '\0');  // no UTF-16 unit takes more than three bytes
    const int size = WideCharToMultiByte(CP_UTF8, 0, line.data(), length, bytes.data(), static_cast<int>(bytes.size()),
                                         nullptr, nullptr);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), bytes.data(), static_cast<DWORD>(size), &written, nullptr);
}

}  // namespace kvn::control_panel

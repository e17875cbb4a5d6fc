#include "tests/service_double/console_text.h"

#include <windows.h>

namespace kvn::service_double {

std::string ToUtf8(std::wstring_view text) {
    const int characters = static_cast<int>(text.size());
    std::string utf8(static_cast<std::size_t>(
                         WideCharToMultiByte(CP_UTF8, 0, text.data(), characters, nullptr, 0, nullptr, nullptr)),
                     '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), characters, utf8.data(), static_cast<int>(utf8.size()), nullptr,
                        nullptr);
    return utf8;
}

void TellUser(const std::wstring& text) {
    const std::string utf8 = ToUtf8(text + L"\n");
    DWORD written = 0;
    const auto tryOutput = [&] {
        const HANDLE output = GetStdHandle(STD_ERROR_HANDLE);
        return output != nullptr && output != INVALID_HANDLE_VALUE &&
               WriteFile(output, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr) != FALSE;
    };
    // A program without a console has no output until it attaches to its parent's.
    if (tryOutput() || (AttachConsole(ATTACH_PARENT_PROCESS) && tryOutput())) return;
    // The caption is not just the service's name, or the page would take the box for the service.
    MessageBoxW(nullptr, text.c_str(), L"KvnMouseApl (stand-in)", MB_ICONINFORMATION);
}

}  // namespace kvn::service_double

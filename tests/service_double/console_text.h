// Text for the log and for the console.
#pragma once

#include <array>
#include <cwchar>
#include <string>
#include <string_view>

namespace kvn::service_double {

// Formats at most 255 characters, as std::swprintf does; meant for numbers and short names.
template <typename... Values>
std::wstring Format(const wchar_t* format, Values... values) {
    std::array<wchar_t, 256> buffer{};
    const int length = std::swprintf(buffer.data(), buffer.size(), format, values...);
    return length > 0 ? std::wstring(buffer.data(), static_cast<std::size_t>(length)) : std::wstring();
}

std::string ToUtf8(std::wstring_view text);

// To the standard error output, else to the console that the program was started from, else in a message box.
void TellUser(const std::wstring& text);

}  // namespace kvn::service_double

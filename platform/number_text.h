// Numbers as texts. std::to_wstring and swprintf would link all formatting of the C runtime into the DLL, including
// floating point: more code than all dialogs together.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

namespace kvn::platform {

// Decimal, with a minus sign before a negative number.
inline std::wstring NumberText(int number) {
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

// Hexadecimal with lower-case letters, padded with zeros to `width` digits.
inline std::wstring HexText(std::uint32_t number, std::size_t width) {
    char digits[8];
    const char* const end = std::to_chars(std::begin(digits), std::end(digits), number, 16).ptr;
    const std::wstring text(std::cbegin(digits), end);
    return text.size() < width ? std::wstring(width - text.size(), L'0') + text : text;
}

}  // namespace kvn::platform

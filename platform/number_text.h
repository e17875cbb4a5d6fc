// Numbers as texts. std::to_wstring and swprintf would link the C runtime's whole formatting into the DLL, with
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

// Hexadecimal in lower-case letters, with leading zeros up to `width` digits.
inline std::wstring HexText(std::uint32_t number, std::size_t width) {
    char digits[8];
    const char* const end = std::to_chars(std::begin(digits), std::end(digits), number, 16).ptr;
    const std::wstring text(std::cbegin(digits), end);
    return text.size() < width ? std::wstring(width - text.size(), L'0') + text : text;
}

}  // namespace kvn::platform

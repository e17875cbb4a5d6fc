// Numbers in texts that users type.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvn::platform {

// The value of a digit of this base (10 or 16); nothing for any other character.
std::optional<std::uint32_t> DigitOf(wchar_t character, std::uint32_t base);

// The number, in digits of this base (10 or 16); nothing for any other text, or for a number above the highest.
std::optional<std::uint32_t> ParseNumber(std::wstring_view text, std::uint32_t base, std::uint32_t highest);

}  // namespace kvn::platform

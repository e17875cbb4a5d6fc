#include "platform/typed_number.h"

namespace kvn::platform {
namespace {

constexpr std::wstring_view kDigits = L"0123456789abcdef";
constexpr std::wstring_view kCapitalDigits = L"0123456789ABCDEF";

}  // namespace

std::optional<std::uint32_t> DigitOf(wchar_t character, std::uint32_t base) {
    std::size_t digit = kDigits.find(character);
    if (digit == std::wstring_view::npos) digit = kCapitalDigits.find(character);
    if (digit >= base) return std::nullopt;
    return static_cast<std::uint32_t>(digit);
}

std::optional<std::uint32_t> ParseNumber(std::wstring_view text, std::uint32_t base, std::uint32_t highest) {
    if (text.empty()) return std::nullopt;
    std::uint64_t number = 0;
    for (const wchar_t character : text) {
        const auto digit = DigitOf(character, base);
        if (!digit) return std::nullopt;
        number = number * base + *digit;
        if (number > highest) return std::nullopt;
    }
    return static_cast<std::uint32_t>(number);
}

}  // namespace kvn::platform

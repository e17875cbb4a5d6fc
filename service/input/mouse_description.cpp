#include "service/input/mouse_description.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <tuple>

#include "platform/typed_number.h"

namespace kvn::service {
namespace {

constexpr MouseIds kUnknownMouse{0xFFFF, 0xFFFF};
constexpr std::int32_t kCountWithTilt = model::kMaxButtonCount;
constexpr std::size_t kDigitsOfId = 4;
constexpr std::uint32_t kFewestButtons = 3;
constexpr std::uint32_t kMostButtons = 5;

std::wstring InUpperCase(std::wstring_view text) {
    std::wstring upper(text);
    std::ranges::transform(upper, upper.begin(), [](wchar_t c) { return c >= L'a' && c <= L'z' ? c - 32 : c; });
    return upper;
}

// The last four digits of the hexadecimal number at the beginning of the text.
std::optional<std::uint32_t> NumberAt(std::wstring_view text) {
    const auto isDigit = [](wchar_t character) { return platform::DigitOf(character, 16).has_value(); };
    const auto length = static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
    if (length < kDigitsOfId) return std::nullopt;
    return platform::ParseNumber(text.substr(length - kDigitsOfId, kDigitsOfId), 16, 0xFFFF);
}

// "VID_045E" for a USB mouse, "VID&0002045E" for a Bluetooth one, where the number of the vendor list comes first.
std::optional<std::uint32_t> IdBehind(std::wstring_view name, std::wstring_view word) {
    const std::size_t place = name.find(word);
    if (place == std::wstring_view::npos) return std::nullopt;
    const std::wstring_view rest = name.substr(place + word.size());
    if (rest.empty() || (rest.front() != L'_' && rest.front() != L'&')) return std::nullopt;
    return NumberAt(rest.substr(1));
}

}  // namespace

MouseIds IdsOfDeviceName(std::wstring_view deviceName) {
    const std::wstring name = InUpperCase(deviceName);
    const std::uint32_t vid = IdBehind(name, L"VID").value_or(0);
    const std::uint32_t pid = IdBehind(name, L"PID").value_or(0);
    return vid == 0 || pid == 0 ? kUnknownMouse : MouseIds{vid, pid};
}

model::DeviceRecord DescribeMouse(const MouseFacts& facts, std::uint32_t pressedButtons) {
    const auto pressed = static_cast<std::uint32_t>(std::bit_width(pressedButtons));
    const std::uint32_t buttons = std::clamp(std::max(facts.buttons, pressed), kFewestButtons, kMostButtons);
    const MouseIds ids = IdsOfDeviceName(facts.deviceName);
    model::DeviceRecord record;
    record.hasTilt = facts.hasHorizontalWheel ? 1 : 0;
    record.buttonCount = facts.hasHorizontalWheel ? kCountWithTilt : static_cast<std::int32_t>(buttons);
    record.vid = ids.vid;
    record.pid = ids.pid;
    return record;
}

bool IsSameMouse(const model::DeviceRecord& left, const model::DeviceRecord& right) {
    const auto tied = [](const model::DeviceRecord& record) {
        return std::tie(record.hasTilt, record.buttonCount, record.vid, record.pid, record.mouseImage,
                        record.mouseFlag);
    };
    return tied(left) == tied(right);
}

}  // namespace kvn::service

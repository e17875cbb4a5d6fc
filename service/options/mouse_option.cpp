#include "service/options/mouse_option.h"

#include <array>
#include <vector>

#include "model/registry_values.h"
#include "platform/typed_number.h"

namespace kvn::service {
namespace {

constexpr std::wstring_view kNone = L"none";
constexpr std::uint32_t kHighestId = 0xFFFF;
constexpr std::size_t kLeastParts = 4, kMostParts = 6;

std::vector<std::wstring_view> SplitAtColons(std::wstring_view text) {
    std::vector<std::wstring_view> parts;
    for (std::size_t colon = 0; (colon = text.find(L':')) != std::wstring_view::npos;) {
        parts.push_back(text.substr(0, colon));
        text.remove_prefix(colon + 1);
    }
    parts.push_back(text);
    return parts;
}

std::optional<std::uint32_t> ParseId(std::wstring_view text) {
    const auto id = platform::ParseNumber(text, 16, kHighestId);
    return id == 0U ? std::nullopt : id;
}

std::optional<model::DeviceRecord> ParseMouse(std::wstring_view text) {
    std::vector<std::wstring_view> parts = SplitAtColons(text);
    if (parts.size() < kLeastParts || parts.size() > kMostParts) return std::nullopt;
    parts.resize(kMostParts);
    const auto vid = ParseId(parts[0]);
    const auto pid = ParseId(parts[1]);
    const auto buttons = platform::ParseNumber(parts[2], 10, model::kMaxButtonCount);
    const auto tilt = platform::ParseNumber(parts[3], 10, 1);
    const auto flag = parts[5].empty() ? 0U : platform::ParseNumber(parts[5], 10, 0xFFFFFFFF);
    if (!vid || !pid || !buttons || !tilt || !flag || parts[4].size() > model::kMaxMouseImageLength) return {};
    return model::DeviceRecord{.hasTilt = *tilt,
                               .buttonCount = static_cast<std::int32_t>(*buttons),
                               .vid = *vid,
                               .pid = *pid,
                               .mouseImage = std::wstring(parts[4]),
                               .mouseFlag = *flag};
}

}  // namespace

std::optional<ChosenMouse> ParseChosenMouse(std::wstring_view text) {
    if (text == kNone) return ChosenMouse{};
    auto mouse = ParseMouse(text);
    if (!mouse) return std::nullopt;
    return ChosenMouse{std::move(mouse)};
}

std::wstring TextOf(const ChosenMouse& choice) {
    if (!choice.mouse) return std::wstring(kNone);
    const model::DeviceRecord& mouse = *choice.mouse;
    return model::MouseIdsText(mouse.vid, mouse.pid) + L':' + std::to_wstring(mouse.buttonCount) + L':' +
           std::to_wstring(mouse.hasTilt) + L':' + mouse.mouseImage + L':' + std::to_wstring(mouse.mouseFlag);
}

}  // namespace kvn::service

#include "service/status.h"

#include <array>
#include <cwchar>

#include "model/enum_array.h"
#include "service/version.h"

namespace kvn::service {
namespace {

constexpr model::EnumArray<Why, const wchar_t*, 3> kWhy{{L"selected", L"program", L"forced"}};

std::wstring Line(const wchar_t* key, const std::wstring& value) {
    return key + (L'=' + value) + L'\n';
}

std::wstring Line(const wchar_t* key, std::uint64_t number) {
    return Line(key, std::to_wstring(number));
}

std::wstring IdText(std::uint32_t id) {
    std::array<wchar_t, 16> text{};
    std::swprintf(text.data(), text.size(), L"%04x", id);
    return text.data();
}

std::wstring MouseLines(const model::DeviceRecord& mouse) {
    return Line(L"vid", IdText(mouse.vid)) + Line(L"pid", IdText(mouse.pid)) +
           Line(L"buttons", static_cast<std::uint64_t>(mouse.buttonCount)) + Line(L"tilt", mouse.hasTilt);
}

std::wstring CountLines(const Status& status) {
    return Line(L"reinstalled", status.reinstalled) + Line(L"presses", status.presses) +
           Line(L"actions", status.actions) + Line(L"switches", status.switches);
}

}  // namespace

std::wstring StatusText(const Status& status) {
    return Line(L"version", kVersion) + MouseLines(status.mouse.value_or(model::DeviceRecord{})) +
           Line(L"profile", status.profile) + Line(L"why", kWhy[status.why]) +
           Line(L"paused", status.isPaused ? L"yes" : L"no") + Line(L"hook", status.isHookAlive ? L"alive" : L"dead") +
           CountLines(status);
}

}  // namespace kvn::service

#include "service/driver/status.h"

#include <array>

#include "model/enum_array.h"
#include "platform/number_text.h"
#include "service/resources/service_texts.h"
#include "service/resources/service_version.h"

namespace kvn::service {
namespace {

constexpr model::EnumArray<Why, const wchar_t*, 3> kWhy{{L"selected", L"program", L"forced"}};

std::wstring Line(const wchar_t* key, const std::wstring& value) {
    return key + (L'=' + value) + L'\n';
}

std::wstring Line(const wchar_t* key, std::uint64_t number) {
    return Line(key, std::to_wstring(number));
}

std::wstring MouseLines(const model::DeviceRecord& mouse) {
    return Line(L"vid", platform::HexText(mouse.vid, 4)) + Line(L"pid", platform::HexText(mouse.pid, 4)) +
           Line(L"buttons", static_cast<std::uint64_t>(mouse.buttonCount)) + Line(L"tilt", mouse.hasTilt);
}

std::wstring CountLines(const Status& status) {
    return Line(L"reinstalled", status.reinstalled) + Line(L"presses", status.presses) +
           Line(L"actions", status.actions) + Line(L"switches", status.switches);
}

}  // namespace

std::wstring StatusText(const Status& status) {
    return Line(L"version", kVersion) + MouseLines(status.mouse.value_or(model::DeviceRecord{})) +
           Line(L"profile", OnOneLine(status.profile)) + Line(L"why", kWhy[status.why]) +
           Line(L"paused", status.isPaused ? L"yes" : L"no") + Line(L"hook", status.isHookAlive ? L"alive" : L"dead") +
           CountLines(status);
}

}  // namespace kvn::service

#include "model/registry_values.h"

#include "platform/number_text.h"

namespace kvn::model {
namespace {

std::wstring IdText(std::uint32_t id) {
    constexpr std::size_t kDigits = 4;
    return platform::HexText(id, kDigits);
}

}  // namespace

std::wstring MouseModelName(std::uint32_t vid, std::uint32_t pid) {
    return L"VID" + IdText(vid) + L"PID" + IdText(pid);
}

std::wstring MouseIdsText(std::uint32_t vid, std::uint32_t pid) {
    return IdText(vid) + L':' + IdText(pid);
}

std::wstring MouseModelKey(std::uint32_t vid, std::uint32_t pid) {
    const std::wstring base = kBaseKey;
    return vid == 0 || pid == 0 ? base : base + L'\\' + MouseModelName(vid, pid);
}

}  // namespace kvn::model

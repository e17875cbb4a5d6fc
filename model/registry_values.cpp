#include "model/registry_values.h"

#include "platform/number_text.h"

namespace kvn::model {

std::wstring MouseModelName(std::uint32_t vid, std::uint32_t pid) {
    constexpr std::size_t kDigits = 4;
    return L"VID" + platform::HexText(vid, kDigits) + L"PID" + platform::HexText(pid, kDigits);
}

std::wstring MouseModelKey(std::uint32_t vid, std::uint32_t pid) {
    const std::wstring base = kBaseKey;
    return vid == 0 || pid == 0 ? base : base + L'\\' + MouseModelName(vid, pid);
}

}  // namespace kvn::model

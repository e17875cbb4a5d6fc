#include "model/registry_values.h"

#include <cwchar>

namespace kvn::model {

std::wstring ModelName(std::uint32_t vid, std::uint32_t pid) {
    wchar_t name[32];
    const int length =
        std::swprintf(name, std::size(name), L"VID%04xPID%04x", static_cast<unsigned>(vid), static_cast<unsigned>(pid));
    return {name, static_cast<std::size_t>(length)};
}

std::wstring ModelKey(std::uint32_t vid, std::uint32_t pid) {
    const std::wstring base = kBaseKey;
    return vid == 0 || pid == 0 ? base : base + L'\\' + ModelName(vid, pid);
}

}  // namespace kvn::model

#include "service/tray/mouse_name.h"

#include <array>
#include <cwchar>

namespace kvn::service {

std::wstring MouseName(const model::DeviceRecord& mouse) {
    std::array<wchar_t, 32> name{};
    std::swprintf(name.data(), name.size(), L"%04x:%04x", mouse.vid, mouse.pid);
    return name.data();
}

}  // namespace kvn::service

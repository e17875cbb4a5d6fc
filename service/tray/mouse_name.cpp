#include "service/tray/mouse_name.h"

#include "platform/number_text.h"

namespace kvn::service {

std::wstring MouseName(const model::DeviceRecord& mouse) {
    return platform::HexText(mouse.vid, 4) + L':' + platform::HexText(mouse.pid, 4);
}

}  // namespace kvn::service

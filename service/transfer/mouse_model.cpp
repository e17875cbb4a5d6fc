#include "service/transfer/mouse_model.h"

#include "model/registry_access.h"
#include "model/settings_store.h"

namespace kvn::service {

std::optional<MouseModel> PublishedModel() {
    const auto vid = model::ReadCurrentDeviceNumber(model::RegistryValue::Vid);
    const auto pid = vid ? model::ReadCurrentDeviceNumber(model::RegistryValue::Pid) : std::nullopt;
    if (!pid) return std::nullopt;
    return MouseModel{*vid, *pid};
}

std::wstring ProfileFilePath(const MouseModel& mouse) {
    return model::SettingsFolder() + model::ProfileFileName(mouse.vid, mouse.pid);
}

}  // namespace kvn::service

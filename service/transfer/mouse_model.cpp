#include "service/transfer/mouse_model.h"

#include "model/registry_access.h"
#include "model/settings_store.h"

namespace kvn::service {
namespace {

// Waits up to half a second for a service that is just publishing.
bool Read(model::RegistryValue value, std::uint32_t& number) {
    return !model::ReadCurrentDeviceValue(value, &number, sizeof number);
}

}  // namespace

std::optional<MouseModel> PublishedModel() {
    MouseModel published;
    if (!Read(model::RegistryValue::Vid, published.vid) || !Read(model::RegistryValue::Pid, published.pid)) {
        return std::nullopt;
    }
    return published;
}

std::wstring ProfileFilePath(const MouseModel& model) {
    return model::SettingsFolder() + model::ProfileFileName(model.vid, model.pid);
}

}  // namespace kvn::service

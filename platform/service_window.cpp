#include "platform/service_window.h"

namespace kvn::platform {
namespace {

constexpr UINT NumberOf(ServiceMessage message) {
    return static_cast<UINT>(message);
}

}  // namespace

HWND FindService() {
    return FindWindowW(nullptr, kServiceName);
}

bool IsServiceAvailable() {
    const HWND service = FindService();
    return service != nullptr && SendMessageW(service, NumberOf(ServiceMessage::Probe), 0, 0) != kProbeRefused;
}

void NotifySettingsChanged() {
    if (const HWND service = FindService()) PostMessageW(service, NumberOf(ServiceMessage::SettingsChanged), 0, 0);
}

}  // namespace kvn::platform

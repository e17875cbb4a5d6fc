#include "platform/service_messages.h"

#include <optional>

namespace kvn::platform {
namespace {

// The service's answer; nothing without a service.
std::optional<LRESULT> Send(ServiceMessage message, LPARAM lParam = 0) {
    const HWND service = FindService();
    if (service == nullptr) return std::nullopt;
    return SendMessageW(service, static_cast<UINT>(message), 0, lParam);
}

void Post(ServiceMessage message) {
    if (const HWND service = FindService()) PostMessageW(service, static_cast<UINT>(message), 0, 0);
}

}  // namespace

HWND FindService() {
    return FindWindowW(nullptr, kServiceName);
}

bool IsServiceAvailable() {
    return Send(ServiceMessage::Probe).value_or(kProbeRefused) != kProbeRefused;
}

void NotifySettingsChanged() {
    Post(ServiceMessage::SettingsChanged);
}

void NotifyGestureEditBegin() {
    Send(ServiceMessage::GestureEditBegin);
}

void NotifyGestureEditEnd() {
    Post(ServiceMessage::GestureEditEnd);
}

bool IsButtonHeld(ServiceButton button) {
    if (Send(ServiceMessage::IsButtonHeld, static_cast<LPARAM>(button)).value_or(0) == 0) return false;
    OutputDebugStringW(L"Key ON\n");  // docs/kept-behaviour.md
    return true;
}

}  // namespace kvn::platform

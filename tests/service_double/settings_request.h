// The requests of a second start of the program, and their execution by the running service.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace kvn::service_double {

// The answers to a request. A window that does not handle requests answers 0.
enum class SettingsReply : LRESULT {
    NotUnderstood = 0,
    Delivered = 1,
    NoPage = 2,
    PageDidNotAnswer = 3,
    ServiceDidNotAnswer = 4
};

// "Send these initial settings to the page". It travels in a WM_COPYDATA message to the service's window.
struct SettingsRequest {
    std::uint64_t page = 0;  // window handle; 0: look for it
    std::vector<std::int32_t> settings;
};

// For the second process. Waits until the service has sent the settings, or gives up after some seconds.
SettingsReply AskToSendSettings(HWND service, const SettingsRequest& request);

// For the service: the request in a WM_COPYDATA message; nothing if the message is something else.
std::optional<SettingsRequest> ReadRequest(const COPYDATASTRUCT* message);

// The settings in the page's format: each number in four bytes, the lowest first.
std::vector<std::byte> RecordOf(const SettingsRequest& request);

// For the service: sends this record to the page as a WM_COPYDATA message from `service`.
SettingsReply SendSettings(HWND service, const SettingsRequest& request);

}  // namespace kvn::service_double

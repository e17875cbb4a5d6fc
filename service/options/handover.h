// How a second start hands its command to the running service, and gets the answer: WM_COPYDATA to the service's
// window, and its text back to a window of the second start.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "service/options/answer.h"

namespace kvn::service {

inline constexpr unsigned kAnswerMilliseconds = 8'000;

// In the second start. Nothing when the service does not answer in this time, or does not understand.
std::optional<Answer> AskService(HWND service, const std::vector<std::wstring>& arguments,
                                 unsigned milliseconds = kAnswerMilliseconds);

// In the service.
struct HandedOver {
    HWND replyWindow = nullptr;
    std::wstring arguments;  // as one command line, without a program's name
};

// Nothing when the message is somebody else's.
std::optional<HandedOver> ReadHandedOver(WPARAM wParam, LPARAM lParam);
// Sends the text; returns the result for the message.
LRESULT Reply(HWND service, const HandedOver& request, const Answer& answer);

}  // namespace kvn::service

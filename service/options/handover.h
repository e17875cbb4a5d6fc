// Passes the command of a second start to the running service, and the answer back: WM_COPYDATA to the service's
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

// For the second start. Nothing if the service does not answer in time, or does not understand the request.
std::optional<Answer> AskService(HWND service, const std::vector<std::wstring>& arguments,
                                 unsigned milliseconds = kAnswerMilliseconds);

// For the service.
struct HandedOver {
    HWND replyWindow = nullptr;
    std::wstring arguments;  // as one command line, without a program's name
};

// Nothing if the message comes from another program.
std::optional<HandedOver> ReadHandedOver(WPARAM wParam, LPARAM lParam);
// Sends the text; returns the result for the message.
LRESULT Reply(HWND service, const HandedOver& request, const Answer& answer);

}  // namespace kvn::service

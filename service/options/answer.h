// The answer to a command of the command line or the menu.
#pragma once

#include <string>

namespace kvn::service {

enum ExitCode : int { kDone = 0, kFailed = 1, kWrongOptions = 2, kOtherModel = 3 };

struct Answer {
    int exitCode = kDone;
    std::wstring text;  // complete lines, or nothing
};

// The text with this number, as the answer to a command that failed.
Answer Fault(unsigned textId, const std::wstring& first = {}, const std::wstring& second = {});

}  // namespace kvn::service

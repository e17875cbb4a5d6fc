// A running recorder, and the input that reached its windows.
#pragma once

#include <windows.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/end_to_end/process.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/hands.h"

namespace kvn::service_end_to_end {

using Lines = std::vector<std::string>;

class Recorder {
public:
    // Waits for its window, which is then in front.
    Recorder(const end_to_end::ProcessGroup& processes, const Hands& userHands, const std::wstring& program,
             const std::wstring& title, const std::wstring& logPath, std::vector<std::wstring> options = {});

    HWND Window() const { return window; }
    const end_to_end::Process& Process() const { return process; }
    POINT Middle() const;

    // Brings it to the front, and the pointer over it.
    void ComeToFront() const;

    // Waits until this many lines have come or the patience runs out; returns the lines since the last call. Leaves out
    // lines about the window itself.
    Lines Arrived(std::size_t count, std::chrono::milliseconds patience = end_to_end::kPatience);
    // The same, once everything that the service has sent so far has arrived: a real key comes last.
    Lines ArrivedUntilNow();
    // Waits for this line and returns all lines up to it; empty if it does not come.
    Lines ArrivedUpTo(const std::string& line, std::chrono::milliseconds patience = end_to_end::kPatience);
    // All lines of the log, including those about the window.
    Lines All() const;
    void Forget() { static_cast<void>(ArrivedUntilNow()); }

private:
    Lines Peek() const;

    const Hands& hands;
    std::wstring log;
    end_to_end::Process process;
    HWND window = nullptr;
    std::size_t taken = 0;  // lines of Peek that were returned
};

}  // namespace kvn::service_end_to_end

// A recorder that runs: what reached its windows.
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

    // Waits until this many lines have come, as long as the patience lasts; returns the lines that have come since
    // the last time. Lines about the window itself are left out.
    Lines Arrived(std::size_t count, std::chrono::milliseconds patience = end_to_end::kPatience);
    // The same, when all is there that the service has sent until now: a real key comes last.
    Lines ArrivedUntilNow();
    // Waits for this line and returns all until there; empty when it does not come.
    Lines ArrivedUpTo(const std::string& line, std::chrono::milliseconds patience = end_to_end::kPatience);
    // All lines of the log, those about the window too.
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

#include "tests/service_end_to_end/recorder_driver.h"

#include <algorithm>
#include <utility>

#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/service_end_to_end/recorder_protocol.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::WaitFor;

// The key that comes last: no function sends it.
constexpr char kFenceKey[] = "F11";
constexpr char kFenceLine[] = "real up F11";

bool IsOfFence(const std::string& line) {
    return line.starts_with("real ") && line.find("F11") != std::string::npos;
}

Lines SplitLines(const std::string& text) {
    Lines lines;
    std::size_t start = 0;
    for (std::size_t end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
        lines.push_back(text.substr(start, end - start));
    }
    return lines;
}

std::vector<std::wstring> WithLog(const std::wstring& title, const std::wstring& log,
                                  std::vector<std::wstring> options) {
    options.insert(options.end(), {L"--title", title, L"--log", log});
    return options;
}

}  // namespace

Recorder::Recorder(const end_to_end::ProcessGroup& processes, const Hands& userHands, const std::wstring& program,
                   const std::wstring& title, const std::wstring& logPath, std::vector<std::wstring> options)
    : hands(userHands), log(logPath), process(processes.Start(program, WithLog(title, log, std::move(options)))) {
    window = WaitFor("the recorder's window", [&] {
        const HWND found = FindWindowW(nullptr, title.c_str());
        return found != nullptr && IsWindowVisible(found) ? found : nullptr;
    });
}

POINT Recorder::Middle() const {
    return end_to_end::MiddleOf(end_to_end::ScreenRectangle(window));
}

void Recorder::ComeToFront() const {
    hands.BringToFront(window);
    hands.MoveTo(Middle());
    WaitFor("the pointer over the recorder", [this] {
        POINT now{};
        GetCursorPos(&now);
        return now.x == Middle().x && now.y == Middle().y;
    });
}

Lines Recorder::All() const {
    return end_to_end::Exists(log) ? SplitLines(end_to_end::ReadFileBytes(log)) : Lines();
}

Lines Recorder::Peek() const {
    Lines lines = All();
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("window "); });
    return lines;
}

Lines Recorder::Arrived(std::size_t count, std::chrono::milliseconds patience) {
    Lines now;
    test::ComesTrue(
        [&] {
            now = Peek();
            return now.size() >= taken + count;
        },
        patience);
    const Lines fresh(now.begin() + static_cast<std::ptrdiff_t>(taken), now.end());
    taken = now.size();
    return fresh;
}

Lines Recorder::ArrivedUpTo(const std::string& line, std::chrono::milliseconds patience) {
    Lines fresh;
    test::ComesTrue(
        [&] {
            const Lines now = Peek();
            const auto begin = now.begin() + static_cast<std::ptrdiff_t>(taken);
            const auto found = std::find(begin, now.end(), line);
            if (found == now.end()) return false;
            fresh.assign(begin, found + 1);
            return true;
        },
        patience);
    taken += fresh.size();
    return fresh;
}

Lines Recorder::ArrivedUntilNow() {
    hands.PressKey(kFenceKey);
    Lines fresh;
    const auto isFence = [](const std::string& line) { return line.starts_with(kFenceLine); };
    WaitFor("the last key to arrive", [&] {
        const Lines now = Peek();
        const auto begin = now.begin() + static_cast<std::ptrdiff_t>(taken);
        const auto found = std::find_if(begin, now.end(), isFence);
        if (found == now.end()) return false;
        fresh.assign(begin, found + 1);
        return true;
    });
    taken += fresh.size();
    std::erase_if(fresh, IsOfFence);
    return fresh;
}

}  // namespace kvn::service_end_to_end

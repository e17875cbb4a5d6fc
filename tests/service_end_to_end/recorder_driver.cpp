#include "tests/service_end_to_end/recorder_driver.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
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
constexpr std::chrono::seconds kLongestWayOfAKey{3};
constexpr int kMostPresses = 10;

bool IsOfFence(const std::string& line) {
    return line.starts_with("real ") && line.find("F11") != std::string::npos;
}

bool IsFence(const std::string& line) {
    return line.starts_with(kFenceLine);
}

// The lines up to the first fence behind this many earlier ones; nothing when there is none.
std::optional<Lines> UpToFenceBehind(std::ptrdiff_t earlier, Lines lines) {
    auto end = lines.begin();
    for (auto fences = earlier + 1; fences > 0; --fences) {
        end = std::find_if(end, lines.end(), IsFence);
        if (end == lines.end()) return std::nullopt;
        ++end;
    }
    lines.erase(end, lines.end());
    return lines;
}

// Without the lines about the window itself, and those of the last key.
Lines Visible(Lines lines) {
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("window ") || IsOfFence(line); });
    return lines;
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

// The pointer moves even if it is there already: while it rests, the service does not look which program is in front.
void Recorder::ComeToFront() const {
    hands.BringToFront(window);
    hands.MoveTo({Middle().x + 1, Middle().y});
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
    return Visible(All());
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

// Earlier messages to another window may move the focus back to it once more. Then the key is lost and is pressed
// again.
Lines Recorder::ArrivedUntilNow() {
    const auto earlier = std::ranges::count_if(All(), IsFence);
    std::optional<Lines> now;
    const auto hasCome = [&] { return (now = UpToFenceBehind(earlier, All())).has_value(); };
    hands.PressKey(kFenceKey);
    int presses = 1;
    for (; !test::ComesTrue(hasCome, kLongestWayOfAKey); ++presses) {
        if (presses == kMostPresses) throw end_to_end::StoryError("the last key does not arrive");
        hands.BringToFront(window);
        hands.PressKey(kFenceKey);
    }
    // A press that was late instead of lost would end the next reading.
    test::ComesTrue([&] { return std::ranges::count_if(All(), IsFence) >= earlier + presses; }, kLongestWayOfAKey);
    Lines fresh = Visible(*now);
    fresh.erase(fresh.begin(), fresh.begin() + static_cast<std::ptrdiff_t>(taken));
    taken += fresh.size();
    return fresh;
}

}  // namespace kvn::service_end_to_end

#include "tools/bundle_runner/test_output.h"

#include <array>
#include <optional>

namespace kvn::bundle {
namespace {

constexpr std::string_view kBegin = "[ RUN      ] ";

struct EndMark {
    std::string_view mark;
    Outcome outcome;
};
constexpr std::array kEnds{EndMark{"[       OK ] ", Outcome::Passed}, EndMark{"[  FAILED  ] ", Outcome::Failed},
                           EndMark{"[  SKIPPED ] ", Outcome::Skipped}};

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

// A mark may follow a test's output on the same line.
std::optional<Outcome> EndOf(std::string_view name, std::string_view line) {
    for (const EndMark& end : kEnds) {
        const std::size_t place = line.find(end.mark);
        if (place != std::string_view::npos && line.substr(place + end.mark.size()).starts_with(name)) {
            return end.outcome;
        }
    }
    return std::nullopt;
}

}  // namespace

std::vector<TestResult> ParseTestOutput(std::string_view output) {
    std::vector<TestResult> results;
    bool isRunning = false;
    while (!output.empty()) {
        const std::string_view line = TakeLine(output);
        if (line.starts_with(kBegin)) {
            results.push_back({std::string(line.substr(kBegin.size())), Outcome::Failed, {}});
            isRunning = true;
        } else if (isRunning) {
            const std::optional<Outcome> end = EndOf(results.back().name, line);
            isRunning = !end;
            if (end) results.back().outcome = *end;
            if (!end) results.back().printed.append(line).append("\n");
        }
    }
    return results;
}

}  // namespace kvn::bundle

#include "tests/support/process_use.h"

#include <psapi.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/system_library.h"
#include "platform/unique_resource.h"

namespace kvn::test {
namespace {

constexpr char kProcesses[] = "Z:\\proc\\";

// Files of this folder report no size until they are read.
std::string ContentOf(const std::string& path) {
    constexpr DWORD kMost = 64 * 1024;
    const platform::UniqueFile file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                OPEN_EXISTING, 0, nullptr));
    std::string content(kMost, '\0');
    DWORD read = 0;
    if (!file || !ReadFile(file.Get(), content.data(), kMost, &read, nullptr)) return {};
    content.resize(read);
    return content;
}

// Calls it for each name in a folder that begins with a digit, until it returns true; returns that name.
template <typename Condition>
std::string FindNumber(const std::string& folder, const Condition& isMet) {
    WIN32_FIND_DATAA found{};
    const platform::UniqueFileSearch search(FindFirstFileA((folder + "*").c_str(), &found));
    if (!search) return {};
    std::string number;
    do {
        const std::string name = found.cFileName;
        if (name.front() >= '1' && name.front() <= '9' && isMet(name)) number = name;
    } while (number.empty() && FindNextFileA(search.Get(), &found));
    return number;
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// The same program may also run in another Wine prefix.
bool IsInOurWindows(const std::string& number) {
    const char* const prefix = std::getenv("WINEPREFIX");
    return prefix == nullptr || Contains(ContentOf(kProcesses + number + "\\environ"), prefix);
}

double NanosecondsOf(const std::string& number) {
    double nanoseconds = 0;
    const std::string threads = kProcesses + number + "\\task\\";
    FindNumber(threads, [&](const std::string& thread) {
        nanoseconds += std::strtod(ContentOf(threads + thread + "\\schedstat").c_str(), nullptr);
        return false;
    });
    return nanoseconds;
}

double PrivateKilobytesOf(const std::string& number) {
    constexpr std::string_view kLine = "RssAnon:";
    const std::string status = ContentOf(kProcesses + number + "\\status");
    const std::size_t place = status.find(kLine);
    return place == std::string::npos ? 0 : std::strtod(status.c_str() + place + kLine.size(), nullptr);
}

// Where Wine does not count handles, the lowest free number shows whether they accumulate.
double HandlesOf(HANDLE process) {
    DWORD count = 0;
    if (GetProcessHandleCount(process, &count) && count != 0) return count;
    HANDLE lowest = nullptr;
    if (!DuplicateHandle(GetCurrentProcess(), GetCurrentProcess(), process, &lowest, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
        return 0;
    }
    DuplicateHandle(process, lowest, nullptr, nullptr, 0, FALSE, DUPLICATE_CLOSE_SOURCE);
    return static_cast<double>(reinterpret_cast<std::uintptr_t>(lowest) / 4);
}

std::optional<ProcessUse> UseBelowWine(HANDLE process, const char* program, const char* option) {
    const std::string number = FindNumber(kProcesses, [&](const std::string& candidate) {
        const std::string arguments = ContentOf(kProcesses + candidate + "\\cmdline");
        return Contains(arguments, program) && Contains(arguments, option) && IsInOurWindows(candidate);
    });
    if (number.empty()) return std::nullopt;
    constexpr double kNanosecondsOfOneMillisecond = 1e6;
    return ProcessUse{NanosecondsOf(number) / kNanosecondsOfOneMillisecond, PrivateKilobytesOf(number),
                      HandlesOf(process)};
}

std::optional<ProcessUse> UseInWindows(HANDLE process) {
    constexpr double kUnitsOfOneMillisecond = 10'000;
    FILETIME created{}, ended{}, kernel{}, user{};
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    if (!GetProcessTimes(process, &created, &ended, &kernel, &user) ||
        !GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters), sizeof counters)) {
        return std::nullopt;
    }
    return ProcessUse{static_cast<double>(kernel.dwLowDateTime + user.dwLowDateTime) / kUnitsOfOneMillisecond,
                      static_cast<double>(counters.PrivateUsage) / 1024, HandlesOf(process)};
}

}  // namespace

std::optional<ProcessUse> UseOf(HANDLE process, const char* program, const char* option) {
    const bool isWine = platform::FindSystemFunction(L"ntdll.dll", "wine_get_version") != nullptr;
    return isWine ? UseBelowWine(process, program, option) : UseInWindows(process);
}

}  // namespace kvn::test

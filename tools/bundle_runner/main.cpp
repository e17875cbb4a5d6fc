// Runs all tests of the bundle on this machine and writes a report. Usage:
// bundle_runner [--only PROGRAM]... [--report FILE]
#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/unique_resource.h"
#include "tools/bundle_runner/html_report.h"
#include "tools/bundle_runner/report_text.h"
#include "tools/bundle_runner/saved_user.h"
#include "tools/bundle_runner/user_service.h"

namespace kvn::bundle {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t kReportName[] = L"KvnMouse-test-report.html";
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

struct Options {
    std::vector<std::wstring> only;
    fs::path report;
};

// One line of tests.txt: a program, and its time limit in seconds.
struct Ring {
    std::wstring program;
    std::chrono::seconds deadline;
};

struct UsageError {};

std::optional<std::wstring> Next(int& place, int count, wchar_t** arguments) {
    return ++place < count ? std::optional<std::wstring>(arguments[place]) : std::nullopt;
}

fs::path DefaultReport() {
    std::array<wchar_t, MAX_PATH> desktop{};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_DESKTOPDIRECTORY, nullptr, SHGFP_TYPE_CURRENT, desktop.data()))) {
        return fs::temp_directory_path() / kReportName;
    }
    return fs::path(desktop.data()) / kReportName;
}

Options ParseOptions(int count, wchar_t** arguments) {
    Options options{{}, DefaultReport()};
    for (int place = 1; place < count; ++place) {
        const std::wstring name = arguments[place];
        const std::optional<std::wstring> value = Next(place, count, arguments);
        if (!value || (name != L"--only" && name != L"--report")) throw UsageError{};
        if (name == L"--only") options.only.push_back(*value);
        if (name == L"--report") options.report = *value;
    }
    return options;
}

fs::path FolderOfThisProgram() {
    std::array<wchar_t, 4096> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return fs::path(path.data()).parent_path();
}

std::vector<std::string> LinesOf(const fs::path& file) {
    std::istringstream text(ReadBytes(file.wstring()));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        line.erase(line.find_last_not_of("\r\n") + 1);
        if (!line.empty()) lines.push_back(line);
    }
    return lines;
}

Ring ToRing(const std::string& line) {
    const std::size_t blank = line.find(' ');
    return {std::wstring(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(blank)),
            std::chrono::seconds(std::stoi(line.substr(blank)))};
}

// A new one each time: interrupted runs may have left theirs behind.
fs::path MakeNewFolder() {
    for (int number = 1;; ++number) {
        fs::path folder = fs::temp_directory_path() / (L"kvn-bundle-" + std::to_wstring(number));
        if (fs::create_directories(folder)) return folder;
    }
}

// A copy of the programs in a writable folder. The bundle's own folder may be read-only.
class WorkFolder {
public:
    explicit WorkFolder(const fs::path& programs) : path(MakeNewFolder()) {
        fs::copy(programs, Programs(), fs::copy_options::recursive);
        MakeWritable();
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }

    fs::path Programs() const { return path / L"programs"; }
    const fs::path& Path() const { return path; }

private:
    // Copies of read-only files are read-only, too.
    void MakeWritable() const {
        for (const auto& entry : fs::recursive_directory_iterator(path)) {
            SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
        }
    }

    fs::path path;
};

// Lets the tests bring windows to the front, which Windows allows only some programs to do, and keeps the screen on.
class ReadyDesktop {
public:
    ReadyDesktop() {
        SystemParametersInfoW(SPI_GETFOREGROUNDLOCKTIMEOUT, 0, &lockTimeout, 0);
        SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, nullptr, 0);
        AllowSetForegroundWindow(ASFW_ANY);
        SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED);
        GetCursorPos(&cursor);
    }
    ReadyDesktop(const ReadyDesktop&) = delete;
    ReadyDesktop& operator=(const ReadyDesktop&) = delete;
    ~ReadyDesktop() {
        SetCursorPos(cursor.x, cursor.y);
        SetThreadExecutionState(ES_CONTINUOUS);
        SystemParametersInfoW(SPI_SETFOREGROUNDLOCKTIMEOUT, 0, ULongToPtr(lockTimeout), 0);
    }

private:
    DWORD lockTimeout = 0;
    POINT cursor{};
};

// Facts that the tests cannot find out by themselves.
void SetTestEnvironment() {
    SetEnvironmentVariableW(L"KVN_EXPECTED_OS", WindowsVersionText().c_str());
    SetEnvironmentVariableW(L"KVN_EXPECTED_LANGUAGE", SpeaksJapanese() ? L"1041" : L"1033");
    SetEnvironmentVariableW(L"KVN_USER_IS_SAVED", L"1");
}

ProgramReport RunRing(const Ring& ring, const WorkFolder& work) {
    ProgramReport report{ToUtf8(ring.program), {}, {}};
    const fs::path program = work.Programs() / (ring.program + L".exe");
    report.run = RunProgram(L"\"" + program.wstring() + L"\" --gtest_color=no", work.Programs().wstring(),
                            (work.Path() / L"output.txt").wstring(), ring.deadline);
    report.tests = ParseTestOutput(report.run.output);
    std::printf("%-30s %s\n", report.name.c_str(), Sentence(CountTests(report)).c_str());
    static_cast<void>(std::fflush(stdout));
    return report;
}

bool IsWanted(const Options& options, const Ring& ring) {
    return options.only.empty() ||
           std::find(options.only.begin(), options.only.end(), ring.program) != options.only.end();
}

void RunEverything(const Options& options, const fs::path& bundle, const WorkFolder& work, Report& report) {
    const std::wstring programs = work.Programs().wstring();
    report.pictures = TakePictures(programs, work.Path().wstring());
    report.installer = TryInstaller((bundle / L"KvnMouseUtil.msi").wstring(), programs, work.Path().wstring());
    for (const std::string& line : LinesOf(work.Programs() / L"tests.txt")) {
        const Ring ring = ToRing(line);
        if (IsWanted(options, ring)) report.programs.push_back(RunRing(ring, work));
    }
}

void Write(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
    std::printf("\nThe report is %s\n", ToUtf8(file.wstring()).c_str());
}

int RunBundle(const Options& options) {
    const fs::path programs = FolderOfThisProgram();
    const WorkFolder work(programs);
    Report report;
    report.facts = MachineFacts();
    report.leftOut = LinesOf(programs / L"left-out.txt");
    report.version = LinesOf(programs / L"version.txt").at(0);
    {
        const UserService service((work.Programs() / L"service" / L"KvnMouseApl.exe").wstring());
        SavedUser user;
        const ReadyDesktop desktop;
        SetTestEnvironment();
        RunEverything(options, programs.parent_path(), work, report);
        report.faults = user.PutBack();
    }
    Write(options.report, ToHtml(report));
    const Counts counts = CountAll(report);
    std::printf("%s\n", Sentence(counts).c_str());
    return counts.failed == 0 ? 0 : kExitFailed;
}

int Main(int count, wchar_t** arguments) {
    try {
        return RunBundle(ParseOptions(count, arguments));
    } catch (const UsageError&) {
        static_cast<void>(std::fputs("Usage: bundle_runner [--only PROGRAM]... [--report FILE]\n", stderr));
        return kExitUsage;
    } catch (const std::exception& error) {
        static_cast<void>(std::fprintf(stderr, "The tests could not be run: %s\n", error.what()));
        return kExitFailed;
    }
}

}  // namespace
}  // namespace kvn::bundle

int wmain(int count, wchar_t** arguments) {
    return kvn::bundle::Main(count, arguments);
}

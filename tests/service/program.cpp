#include "tests/service/program.h"

#include <array>
#include <chrono>
#include <stdexcept>

#include "platform/service_protocol.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/started_process.h"
#include "tests/support/waiting.h"
#include "tests/support/window_search.h"

namespace kvn::service_test {
namespace {

using platform::UniqueKernelObject;
using test::Await;
using test::ComesTrue;

constexpr std::chrono::seconds kLongWait{30};
constexpr DWORD kLongWaitMilliseconds = 30'000;

std::wstring Program() {
    std::array<wchar_t, 1024> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const std::wstring own = path.data();
    return own.substr(0, own.find_last_of(L'\\') + 1) + L"service\\KvnMouseApl.exe";
}

std::wstring CommandLineOf(const Arguments& arguments) {
    std::wstring line = L'"' + Program() + L'"';
    for (const std::wstring& argument : arguments) line += L" \"" + argument + L'"';
    return line;
}

// A pipe whose writing end a process can inherit.
struct Pipe {
    UniqueKernelObject reader;
    UniqueKernelObject writer;

    Pipe() {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        CreatePipe(reader.Receive(), writer.Receive(), &inheritable, 64 * 1024);
        SetHandleInformation(reader.Get(), HANDLE_FLAG_INHERIT, 0);
    }
};

std::string ReadAll(HANDLE reader) {
    std::string text;
    std::array<char, 4096> part{};
    for (DWORD read = 0; ReadFile(reader, part.data(), static_cast<DWORD>(part.size()), &read, nullptr) && read > 0;) {
        text.append(part.data(), read);
    }
    return text;
}

UniqueKernelObject MakeJob() {
    UniqueKernelObject job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

}  // namespace

void ServiceProgramTest::SetUp() {
    ASSERT_EQ(FindWindowW(nullptr, platform::kServiceName), nullptr) << "another service runs";
    RegDeleteTreeW(HKEY_CURRENT_USER, test::kMouseKey);
    // Wine's first program that asks for it starts the desktop's process, which must not join the job.
    GetDesktopWindow();
    job = MakeJob();
}

void ServiceProgramTest::TearDown() {
    TerminateJobObject(job.Get(), 1);
    EXPECT_TRUE(ComesTrue([this] { return RunningProcesses() == 0 && Window() == nullptr; }, kLongWait));
    RegDeleteTreeW(HKEY_CURRENT_USER, test::kMouseKey);
}

UniqueKernelObject ServiceProgramTest::Create(const Arguments& arguments, HANDLE output) const {
    std::wstring line = CommandLineOf(arguments);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    PROCESS_INFORMATION started{};
    const auto create = [&] {
        return CreateProcessW(Program().c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                              nullptr, &startup, &started) != FALSE;
    };
    if (!test::CreatesProcess(create)) {
        throw std::runtime_error("cannot start the service's program: error " + std::to_string(GetLastError()));
    }
    const UniqueKernelObject thread(started.hThread);
    AssignProcessToJobObject(job.Get(), started.hProcess);
    ResumeThread(thread.Get());
    return UniqueKernelObject(started.hProcess);
}

Outcome ServiceProgramTest::Run(const Arguments& arguments) const {
    Pipe pipe;
    const UniqueKernelObject process = Create(arguments, pipe.writer.Get());
    pipe.writer.Reset();
    Outcome outcome;
    if (WaitForSingleObject(process.Get(), kLongWaitMilliseconds) != WAIT_OBJECT_0) return outcome;
    GetExitCodeProcess(process.Get(), &outcome.exitCode);
    outcome.output = ReadAll(pipe.reader.Get());
    return outcome;
}

DWORD ServiceProgramTest::RunWithoutOutput(const Arguments& arguments) const {
    const UniqueKernelObject process = Create(arguments, nullptr);
    DWORD exitCode = STILL_ACTIVE;
    if (WaitForSingleObject(process.Get(), kLongWaitMilliseconds) == WAIT_OBJECT_0) {
        GetExitCodeProcess(process.Get(), &exitCode);
    }
    return exitCode;
}

void ServiceProgramTest::StartService(const Arguments& arguments) {
    service = Create(arguments, nullptr);
    Await(
        "the service", [] { return Window(); }, kLongWait);
}

HWND ServiceProgramTest::Window() {
    return FindWindowW(nullptr, platform::kServiceName);
}

DWORD ServiceProgramTest::ServiceProcess() {
    DWORD process = 0;
    GetWindowThreadProcessId(Window(), &process);
    return process;
}

HWND ServiceProgramTest::Dialog(HWND other) {
    return test::FindTopLevelWindowOf(ServiceProcess(), [=](HWND window) {
        return window != other && IsWindowVisible(window) && test::ClassOf(window) == L"#32770";
    });
}

DWORD ServiceProgramTest::AwaitServiceOtherThan(DWORD process) {
    const auto find = [=] {
        const DWORD found = ServiceProcess();
        return found == process ? 0 : found;
    };
    return Await("another service", find, kLongWait);
}

std::optional<DWORD> ServiceProgramTest::ExitCodeOfService() const {
    if (WaitForSingleObject(service.Get(), kLongWaitMilliseconds) != WAIT_OBJECT_0) return std::nullopt;
    DWORD code = 0;
    GetExitCodeProcess(service.Get(), &code);
    return code;
}

int ServiceProgramTest::RunningProcesses() const {
    JOBOBJECT_BASIC_ACCOUNTING_INFORMATION account{};
    QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &account, sizeof account, nullptr);
    return static_cast<int>(account.ActiveProcesses);
}

void ServiceProgramTest::Kill(DWORD process) {
    const UniqueKernelObject handle(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process));
    TerminateProcess(handle.Get(), 1);
    WaitForSingleObject(handle.Get(), kLongWaitMilliseconds);
}

std::map<std::string, std::string> ServiceProgramTest::Status() const {
    std::map<std::string, std::string> values;
    const std::string text = Run({L"--status"}).output;
    for (std::size_t start = 0, end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
        const std::string line = text.substr(start, end - start);
        const std::size_t equals = line.find('=');
        if (equals != std::string::npos) values[line.substr(0, equals)] = line.substr(equals + 1);
    }
    return values;
}

LRESULT ServiceProgramTest::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(Window(), message, wParam, lParam, SMTO_NORMAL, kLongWaitMilliseconds, &result) == 0) {
        throw std::runtime_error("the service does not answer");
    }
    return static_cast<LRESULT>(result);
}

}  // namespace kvn::service_test

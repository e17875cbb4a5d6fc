#include "tools/bundle_runner/program_run.h"

#include "tools/bundle_runner/machine_facts.h"

namespace kvn::bundle {
namespace {

constexpr UINT kEndedByRunner = 258;  // WAIT_TIMEOUT

platform::UniqueKernelObject MakeJob() {
    // Before Windows 8 a program in a job cannot make further jobs, as tests do.
    if (WindowsVersion() < 602) return {};
    platform::UniqueKernelObject job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (job) SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
}

platform::UniqueFile MakeOutputFile(const std::wstring& path) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return platform::UniqueFile(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                                            FILE_ATTRIBUTE_NORMAL, nullptr));
}

STARTUPINFOW StartWith(HANDLE output) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    if (output == nullptr) return start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output;
    return start;
}

}  // namespace

RunningProgram::RunningProgram(std::wstring commandLine, const std::wstring& folder, HANDLE output) : job(MakeJob()) {
    STARTUPINFOW start = StartWith(output);
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, output != nullptr, CREATE_SUSPENDED, nullptr,
                        folder.c_str(), &start, &started)) {
        return;
    }
    process.Reset(started.hProcess);
    const platform::UniqueKernelObject thread(started.hThread);
    id = started.dwProcessId;
    if (job) AssignProcessToJobObject(job.Get(), process.Get());
    ResumeThread(thread.Get());
}

RunningProgram::~RunningProgram() {
    if (!process) return;
    if (job) TerminateJobObject(job.Get(), kEndedByRunner);
    TerminateProcess(process.Get(), kEndedByRunner);
    WaitForSingleObject(process.Get(), INFINITE);
}

bool RunningProgram::EndsWithin(std::chrono::milliseconds patience) const {
    return WaitForSingleObject(process.Get(), static_cast<DWORD>(patience.count())) == WAIT_OBJECT_0;
}

DWORD RunningProgram::ExitCode() const {
    DWORD code = 0;
    GetExitCodeProcess(process.Get(), &code);
    return code;
}

ProgramRun RunProgram(std::wstring commandLine, const std::wstring& folder, const std::wstring& outputFile,
                      std::chrono::seconds deadline) {
    ProgramRun run;
    const auto begin = std::chrono::steady_clock::now();
    {
        const platform::UniqueFile output = MakeOutputFile(outputFile);
        const RunningProgram program(std::move(commandLine), folder, output.Get());
        run.hasStarted = static_cast<bool>(program);
        if (run.hasStarted) {
            run.hasTimedOut = !program.EndsWithin(deadline);
            run.exitCode = program.ExitCode();
        }
    }
    run.duration = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
    run.output = ReadBytes(outputFile);
    return run;
}

std::string ReadBytes(const std::wstring& path) {
    const platform::UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return {};
    std::string bytes(GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) return {};
    bytes.resize(read);
    return bytes;
}

}  // namespace kvn::bundle

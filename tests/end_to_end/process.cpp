#include "tests/end_to_end/process.h"

#include <array>
#include <chrono>

#include "tests/end_to_end/story_waiting.h"
#include "tests/support/narrow_text.h"
#include "tests/support/platform.h"
#include "tests/support/started_process.h"

namespace kvn::end_to_end {
namespace {

constexpr UINT kKilled = 0xDEAD;
constexpr std::chrono::seconds kPatienceWithKilled{10};

std::wstring FileNameOf(const std::wstring& path) {
    return path.substr(path.find_last_of(L'\\') + 1);
}

PROCESS_INFORMATION CreateSuspended(const std::wstring& program, std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    const auto create = [&] {
        return CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr,
                              nullptr, &startup, &started) != FALSE;
    };
    if (!test::CreatesProcess(create)) {
        throw StoryError("cannot start " + test::Narrow(program) + ", error " + std::to_string(GetLastError()));
    }
    return started;
}

}  // namespace

Process::Process(HANDLE job, const std::wstring& program, const std::vector<std::wstring>& arguments)
    : name(test::Narrow(FileNameOf(program))) {
    std::wstring commandLine = L'"' + program + L'"';
    for (const std::wstring& argument : arguments) commandLine += L" \"" + argument + L'"';

    const PROCESS_INFORMATION started = CreateSuspended(program, commandLine);
    process.Reset(started.hProcess);
    id = started.dwProcessId;
    const platform::UniqueKernelObject thread(started.hThread);
    if (!AssignProcessToJobObject(job, process.Get())) {
        TerminateProcess(process.Get(), kKilled);
        throw StoryError("cannot put into the job: " + name);
    }
    ResumeThread(thread.Get());
}

bool Process::IsRunning() const {
    return WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT;
}

DWORD Process::WaitForExitCode() const {
    const auto patience = std::chrono::duration_cast<std::chrono::milliseconds>(kPatience).count();
    if (WaitForSingleObject(process.Get(), static_cast<DWORD>(patience)) != WAIT_OBJECT_0) {
        throw StoryError(name + " does not end");
    }
    DWORD code = 0;
    GetExitCodeProcess(process.Get(), &code);
    return code;
}

ProcessGroup::ProcessGroup() : job(CreateJobObjectW(nullptr, nullptr)) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    if (!job || !SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits)) {
        throw StoryError("cannot make a job for the processes");
    }
}

Process ProcessGroup::Start(const std::wstring& program, const std::vector<std::wstring>& arguments) const {
    return Process(job.Get(), program, arguments);
}

// Kills repeatedly, because a killed process may just be starting another one. Under Wine, one that is killed while it
// starts may count as active for ever; the next test finds out whether it still does anything.
void ProcessGroup::KillAll() const {
    const auto hasEnded = [this] {
        TerminateJobObject(job.Get(), kKilled);
        JOBOBJECT_BASIC_ACCOUNTING_INFORMATION account{};
        return QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &account, sizeof account,
                                         nullptr) &&
               account.ActiveProcesses == 0;
    };
    if (!test::ComesTrue(hasEnded, kPatienceWithKilled) && !test::RunsUnderWine()) {
        throw StoryError("killed processes do not end");
    }
}

std::wstring ProgramFolder() {
    std::array<wchar_t, 1024> path{};
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || length == path.size()) throw StoryError("the programs' folder is unknown");
    const std::wstring program(path.data(), length);
    return program.substr(0, program.find_last_of(L'\\') + 1);
}

}  // namespace kvn::end_to_end

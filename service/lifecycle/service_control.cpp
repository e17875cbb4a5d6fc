#include "service/lifecycle/service_control.h"

#include "platform/service_messages.h"
#include "platform/unique_resource.h"
#include "service/lifecycle/session_lock.h"
#include "service/lifecycle/shared_state.h"
#include "service/lifecycle/watcher.h"
#include "service/options/handover.h"
#include "service/page/service_window.h"
#include "service/resources/service_resource.h"

namespace kvn::service {
namespace {

// A service that is told to quit ends within two seconds. One that hangs does not even answer.
constexpr DWORD kQuitMilliseconds = 1'000, kEndMilliseconds = 2'500, kForcedEndMilliseconds = 1'000;
// A service that has not answered gets only this much longer, so that it and its watcher end within two seconds.
constexpr DWORD kLastChanceMilliseconds = 300;

// If the service has other rights, this start can only wait for it.
platform::UniqueKernelObject ProcessOf(HWND window) {
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    platform::UniqueKernelObject process(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, processId));
    if (!process) process.Reset(OpenProcess(SYNCHRONIZE, FALSE, processId));
    return process;
}

bool HasLockGone() {
    const std::uint64_t deadline = GetTickCount64() + kEndMilliseconds;
    while (SessionLock::IsTaken() && GetTickCount64() < deadline) Sleep(kPollMilliseconds);
    return !SessionLock::IsTaken();
}

bool EndsWithin(HANDLE process, DWORD milliseconds) {
    return WaitForSingleObject(process, milliseconds) == WAIT_OBJECT_0;
}

// The last resort for a service that hangs. Its watcher releases what it held too, but there may be no watcher.
void EndByForce(HANDLE service) {
    SharedMemory memory;
    memory.State().hasEnded = 1;
    TerminateProcess(service, kDone);
    if (EndsWithin(service, kForcedEndMilliseconds)) ReleaseAll(memory.State().held);
}

void EndServiceOf(HWND window, const CommandLine& commands) {
    const platform::UniqueKernelObject service = ProcessOf(window);
    const bool hasAnswered = AskService(window, ArgumentsForService(commands), kQuitMilliseconds).has_value();
    const bool isEnding = hasAnswered || !IsWindow(window);
    const DWORD patience = isEnding ? kEndMilliseconds : kLastChanceMilliseconds;
    if (service && !EndsWithin(service.Get(), patience)) EndByForce(service.Get());
}

}  // namespace

std::optional<Answer> TryToHandOver(const CommandLine& commands) {
    const HWND service = FindRunningService();
    if (service == nullptr) return std::nullopt;
    if (auto answer = AskService(service, ArgumentsForService(commands))) return answer;
    if (IsWindow(service)) return Fault(IDS_FAULT_NO_ANSWER);
    return std::nullopt;
}

Answer HandOver(const CommandLine& commands) {
    const std::uint64_t deadline = GetTickCount64() + kTransitionMilliseconds;
    while (SessionLock::IsTaken()) {
        if (auto answer = TryToHandOver(commands)) return *answer;
        if (GetTickCount64() >= deadline) return Fault(IDS_FAULT_NO_ANSWER);
        Sleep(kPollMilliseconds);
    }
    return Fault(IsForeignServiceThere() ? IDS_FAULT_OTHER_SERVICE : IDS_FAULT_NOT_RUNNING);
}

Answer QuitService(const CommandLine& commands) {
    const HWND window = FindRunningService();
    Answer answer;
    if (window != nullptr) {
        EndServiceOf(window, commands);
    } else if (SessionLock::IsTaken()) {
        answer = HandOver(commands);
        if (answer.exitCode != kDone && SessionLock::IsTaken()) return answer;
    }
    return EndWatcher() && HasLockGone() ? Answer{} : Fault(IDS_FAULT_NO_ANSWER);
}

void ReportSettingsChanged() {
    CommandLine reread;
    reread.rereads = true;
    const HWND service = FindRunningService();
    if (service == nullptr || !AskService(service, ArgumentsForService(reread))) platform::NotifySettingsChanged();
}

}  // namespace kvn::service

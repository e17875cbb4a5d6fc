// KvnMouseApl: the resident service that drives the mouse as people have chosen on the settings page. One start is the
// service of the session; the others hand it their options and end.
#include <windows.h>

#include <exception>
#include <string>
#include <variant>

#include "platform/service_messages.h"
#include "service/application.h"
#include "service/command_line.h"
#include "service/handover.h"
#include "service/help_text.h"
#include "service/page/service_window.h"
#include "service/press_log.h"
#include "service/processes.h"
#include "service/resource.h"
#include "service/session_lock.h"
#include "service/shared_state.h"
#include "service/texts.h"
#include "service/transfer/settings_export.h"
#include "service/transfer/settings_import.h"
#include "service/version.h"
#include "service/watcher.h"

namespace kvn::service {
namespace {

// Longer than a service takes to start or to end.
constexpr std::uint64_t kTransitionMilliseconds = 10'000;
constexpr DWORD kPollMilliseconds = 50;
// A service that is asked to end ends by itself within two seconds; one that hangs does not even answer.
constexpr DWORD kQuitMilliseconds = 1'000, kEndMilliseconds = 2'500, kForcedEndMilliseconds = 1'000;

ExitCode Complain(unsigned textId) {
    Print(Text(textId) + L'\n');
    return kFailed;
}

int Tell(const Answer& answer) {
    Print(answer.text);
    return answer.exitCode;
}

// Takes the service's place until it is to end.
int Serve(const CommandLine& commands) {
    if (IsForeignServiceThere()) return Complain(IDS_FAULT_OTHER_SERVICE);
    Application application;
    if (!application.Start(commands)) return Complain(IDS_FAULT_CANNOT_START);
    CommandLine rest = commands;
    rest.mouse.reset();
    rest.logFile.reset();
    if (const int exitCode = Tell(application.CarryOut(rest)); exitCode != kDone) return exitCode;
    application.Run();
    return kDone;
}

// One try; nothing when there is a service that is starting or ending just now.
std::optional<int> TryToServe(const CommandLine& commands) {
    const SessionLock lock;
    if (lock.IsMine()) return Serve(commands);
    // Started by the watcher, but too late: another start has become the service.
    if (commands.watcherProcess) return kDone;
    return std::nullopt;
}

std::optional<int> TryToHandOver(const CommandLine& commands) {
    const HWND service = FindRunningService();
    if (service == nullptr) return std::nullopt;
    if (const auto answer = AskService(service, ArgumentsForService(commands))) return Tell(*answer);
    if (IsWindow(service)) return Complain(IDS_FAULT_NO_ANSWER);
    return std::nullopt;
}

int StartOrHandOver(const CommandLine& commands) {
    const std::uint64_t deadline = GetTickCount64() + kTransitionMilliseconds;
    while (GetTickCount64() < deadline) {
        if (const auto done = TryToServe(commands)) return *done;
        if (const auto done = TryToHandOver(commands)) return *done;
        Sleep(kPollMilliseconds);
    }
    return Complain(IDS_FAULT_NO_ANSWER);
}

// For options that need a running service.
int HandOver(const CommandLine& commands) {
    const std::uint64_t deadline = GetTickCount64() + kTransitionMilliseconds;
    while (SessionLock::IsTaken()) {
        if (const auto done = TryToHandOver(commands)) return *done;
        if (GetTickCount64() >= deadline) return Complain(IDS_FAULT_NO_ANSWER);
        Sleep(kPollMilliseconds);
    }
    return Complain(IsForeignServiceThere() ? IDS_FAULT_OTHER_SERVICE : IDS_FAULT_NOT_RUNNING);
}

// A service of another user's rights can only be waited for.
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

// The last resort for one that hangs. Its watcher releases what it held, too; but there may be none.
void EndByForce(HANDLE service) {
    SharedMemory memory;
    memory.State().hasEnded = 1;
    TerminateProcess(service, kDone);
    if (EndsWithin(service, kForcedEndMilliseconds)) ReleaseAll(memory.State().held);
}

void QuitService(HWND window, const CommandLine& commands) {
    const platform::UniqueKernelObject service = ProcessOf(window);
    const bool hasAnswered = AskService(window, ArgumentsForService(commands), kQuitMilliseconds).has_value();
    const DWORD patience = hasAnswered ? kEndMilliseconds : kQuitMilliseconds;
    if (service && !EndsWithin(service.Get(), patience)) EndByForce(service.Get());
}

// Waits until the service and its watcher have ended.
int Quit(const CommandLine& commands) {
    const HWND window = FindRunningService();
    if (window != nullptr) {
        QuitService(window, commands);
    } else if (SessionLock::IsTaken()) {
        if (const int exitCode = HandOver(commands); exitCode != kDone && SessionLock::IsTaken()) return exitCode;
    }
    return EndWatcher() && HasLockGone() ? kDone : Complain(IDS_FAULT_NO_ANSWER);
}

// The running service takes them over at once; any other program that the page would know as one is told as by the
// page.
void ReportSettingsChanged() {
    CommandLine reread;
    reread.rereads = true;
    const HWND service = FindRunningService();
    if (service == nullptr || !AskService(service, ArgumentsForService(reread))) platform::NotifySettingsChanged();
}

int Import(const CommandLine& commands) {
    const Answer answer = ImportSettings(FullPath(*commands.importFile),
                                         [&](const auto&, const auto&) { return commands.takesOtherModel; });
    if (answer.exitCode == kDone) ReportSettingsChanged();
    return Tell(answer);
}

// Nothing else happens then.
bool AsksForText(const CommandLine& commands) {
    return commands.wantsHelp || commands.wantsVersion;
}

int CarryOut(const CommandLine& commands) {
    if (commands.watchedProcess) {
        WatchService(*commands.watchedProcess);
        return kDone;
    }
    if (AsksForText(commands)) {
        Print(commands.wantsHelp ? HelpText() : std::wstring(L"KvnMouseApl ") + kVersion + L'\n');
        return kDone;
    }
    if (commands.exportFile) return Tell(ExportSettings(FullPath(*commands.exportFile)));
    if (commands.importFile) return Import(commands);
    if (commands.quits) return Quit(commands);
    return commands.Starts() ? StartOrHandOver(commands) : HandOver(commands);
}

int Complain(const UsageError& error) {
    Print(ErrorText(error));
    return kWrongOptions;
}

// A service that is started again does without a log that it cannot write any more.
bool IsLogRefused(const CommandLine& commands) {
    return commands.logFile && !commands.watcherProcess && !PressLog::CanWriteTo(*commands.logFile);
}

int Run() {
    const auto parsed = ParseArguments(Arguments());
    if (const auto* const error = std::get_if<UsageError>(&parsed)) return Complain(*error);
    CommandLine commands = std::get<CommandLine>(parsed);
    // The running service is somewhere else.
    if (commands.logFile) commands.logFile = FullPath(*commands.logFile);
    if (!AsksForText(commands) && IsLogRefused(commands)) return Complain(BadLogFile(*commands.logFile));
    return CarryOut(commands);
}

}  // namespace
}  // namespace kvn::service

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    try {
        return kvn::service::Run();
    } catch (const std::exception&) {
        return kvn::service::kFailed;
    }
}

// KvnMouseApl: the resident service that drives the mouse as people have chosen on the settings page. One start is the
// service of the session; the others hand it their options and end.
#include <windows.h>

#include <algorithm>
#include <array>
#include <exception>
#include <string>
#include <variant>

#include "service/application.h"
#include "service/driver/press_log.h"
#include "service/lifecycle/service_control.h"
#include "service/lifecycle/session_lock.h"
#include "service/lifecycle/watcher.h"
#include "service/options/arguments.h"
#include "service/options/command_line.h"
#include "service/options/help_text.h"
#include "service/page/service_window.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"
#include "service/resources/service_version.h"
#include "service/transfer/settings_export.h"
#include "service/transfer/settings_import.h"

namespace kvn::service {
namespace {

// Runs as the service until it is told to end. First prints the answers to its options.
Answer Serve(const CommandLine& commands) {
    if (IsForeignServiceThere()) return Fault(IDS_FAULT_OTHER_SERVICE);
    Application application;
    if (!application.Start(commands)) return Fault(IDS_FAULT_CANNOT_START);
    CommandLine rest = commands;
    rest.mouse.reset();
    rest.logFile.reset();
    Answer answer = application.CarryOut(rest);
    if (answer.exitCode != kDone) return answer;
    Print(answer.text);
    application.Run();
    return {};
}

// One try; nothing if another service is just starting or ending.
std::optional<Answer> TryToServe(const CommandLine& commands) {
    const SessionLock lock;
    if (lock.IsMine()) return Serve(commands);
    // The watcher started this one too late: another start has become the service.
    if (commands.watcherProcess) return Answer{};
    return std::nullopt;
}

Answer StartOrHandOver(const CommandLine& commands) {
    const std::uint64_t deadline = GetTickCount64() + kTransitionMilliseconds;
    while (GetTickCount64() < deadline) {
        if (auto answer = TryToServe(commands)) return *answer;
        if (auto answer = TryToHandOver(commands)) return *answer;
        Sleep(kPollMilliseconds);
    }
    return Fault(IDS_FAULT_NO_ANSWER);
}

Answer Watch(const CommandLine& commands) {
    WatchService(*commands.watchedProcess);
    return {};
}

Answer ShowHelp(const CommandLine&) {
    return {kDone, HelpText()};
}

Answer ShowVersion(const CommandLine&) {
    return {kDone, std::wstring(L"KvnMouseApl ") + kVersion + L'\n'};
}

Answer Export(const CommandLine& commands) {
    return ExportSettings(FullPath(*commands.exportFile));
}

Answer Import(const CommandLine& commands) {
    Answer answer = ImportSettings(FullPath(*commands.importFile),
                                   [&](const auto&, const auto&) { return commands.takesOtherModel; });
    if (answer.exitCode == kDone) ReportSettingsChanged();
    return answer;
}

// Help and version: the start does nothing else.
bool AsksForText(const CommandLine& commands) {
    return commands.wantsHelp || commands.wantsVersion;
}

struct StartRow {
    bool (*isWanted)(const CommandLine& commands);
    Answer (*carryOut)(const CommandLine& commands);
};

// A start carries out the first row that its options ask for.
constexpr std::array kStarts{
    StartRow{[](const CommandLine& commands) { return commands.watchedProcess.has_value(); }, Watch},
    StartRow{[](const CommandLine& commands) { return commands.wantsHelp; }, ShowHelp},
    StartRow{[](const CommandLine& commands) { return commands.wantsVersion; }, ShowVersion},
    StartRow{[](const CommandLine& commands) { return commands.exportFile.has_value(); }, Export},
    StartRow{[](const CommandLine& commands) { return commands.importFile.has_value(); }, Import},
    StartRow{[](const CommandLine& commands) { return commands.quits; }, QuitService},
    StartRow{[](const CommandLine& commands) { return commands.Starts(); }, StartOrHandOver},
    StartRow{[](const CommandLine&) { return true; }, HandOver},
};

// A service that the watcher starts again goes on without a log that it can no longer write.
bool IsLogRefused(const CommandLine& commands) {
    return commands.logFile && !commands.watcherProcess && !PressLog::CanWriteTo(*commands.logFile);
}

Answer Refuse(const UsageError& error) {
    return {kWrongOptions, ErrorText(error)};
}

Answer Run() {
    const auto parsed = ParseArguments(Arguments());
    if (const auto* const error = std::get_if<UsageError>(&parsed)) return Refuse(*error);
    CommandLine commands = std::get<CommandLine>(parsed);
    // The running service has another current folder.
    if (commands.logFile) commands.logFile = FullPath(*commands.logFile);
    if (!AsksForText(commands) && IsLogRefused(commands)) return Refuse(BadLogFile(*commands.logFile));
    const auto isWanted = [&](const StartRow& row) { return row.isWanted(commands); };
    return std::ranges::find_if(kStarts, isWanted)->carryOut(commands);
}

}  // namespace
}  // namespace kvn::service

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    try {
        const kvn::service::Answer answer = kvn::service::Run();
        kvn::service::Print(answer.text);
        return answer.exitCode;
    } catch (const std::exception&) {
        return kvn::service::kFailed;
    }
}

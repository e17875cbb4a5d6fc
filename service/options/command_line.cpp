#include "service/options/command_line.h"

#include <algorithm>
#include <array>

#include "platform/typed_number.h"
#include "service/options/mouse_option.h"
#include "service/resources/service_resource.h"

namespace kvn::service {
namespace {

using Text = const std::wstring&;

constexpr std::wstring_view kPause = L"--pause", kResume = L"--resume", kProfile = L"--profile", kMouse = L"--mouse",
                            kLog = L"--log", kSettings = L"--settings", kStatus = L"--status", kTry = L"--try",
                            kQuit = L"--quit", kExport = L"--export", kImport = L"--import", kYes = L"--yes",
                            kReread = L"--reread";

struct OptionRow {
    std::wstring_view name;
    std::wstring_view valueName;  // empty: the option takes no value
    unsigned textId;              // 0: not for users
    // False if the value is not valid.
    bool (*apply)(CommandLine& commands, Text value);
};

bool Raise(bool& flag) {
    flag = true;
    return true;
}

bool SetPause(CommandLine& commands, bool isPaused) {
    commands.pause = isPaused;
    return true;
}

bool SetText(std::optional<std::wstring>& text, Text value) {
    if (value.empty()) return false;
    text = value;
    return true;
}

bool SetMouse(CommandLine& commands, Text value) {
    commands.mouse = ParseChosenMouse(value);
    return commands.mouse.has_value();
}

bool SetProcess(std::optional<std::uint32_t>& process, Text value) {
    process = platform::ParseNumber(value, 10, 0xFFFFFFFF);
    return process.has_value();
}

constexpr std::array kOptions{
    OptionRow{kQuit, {}, IDS_OPTION_QUIT, [](CommandLine& commands, Text) { return Raise(commands.quits); }},
    OptionRow{kPause, {}, IDS_OPTION_PAUSE, [](CommandLine& commands, Text) { return SetPause(commands, true); }},
    OptionRow{kResume, {}, IDS_OPTION_RESUME, [](CommandLine& commands, Text) { return SetPause(commands, false); }},
    OptionRow{
        kSettings, {}, IDS_OPTION_SETTINGS, [](CommandLine& commands, Text) { return Raise(commands.wantsSettings); }},
    OptionRow{kStatus, {}, IDS_OPTION_STATUS, [](CommandLine& commands, Text) { return Raise(commands.wantsStatus); }},
    OptionRow{kExport, L"FILE", IDS_OPTION_EXPORT,
              [](CommandLine& commands, Text value) { return SetText(commands.exportFile, value); }},
    OptionRow{kImport, L"FILE", IDS_OPTION_IMPORT,
              [](CommandLine& commands, Text value) { return SetText(commands.importFile, value); }},
    OptionRow{kYes, {}, IDS_OPTION_YES, [](CommandLine& commands, Text) { return Raise(commands.takesOtherModel); }},
    OptionRow{kProfile, L"NAME|auto", IDS_OPTION_PROFILE,
              [](CommandLine& commands, Text value) { return SetText(commands.profile, value); }},
    OptionRow{kTry, {}, IDS_OPTION_TRY, [](CommandLine& commands, Text) { return Raise(commands.wantsTry); }},
    OptionRow{kMouse, L"VID:PID:BUTTONS:TILT[:IMAGE[:FLAG]]|none", IDS_OPTION_MOUSE, SetMouse},
    OptionRow{kLog, L"FILE", IDS_OPTION_LOG,
              [](CommandLine& commands, Text value) { return SetText(commands.logFile, value); }},
    OptionRow{L"--help", {}, IDS_OPTION_HELP, [](CommandLine& commands, Text) { return Raise(commands.wantsHelp); }},
    OptionRow{
        L"--version", {}, IDS_OPTION_VERSION, [](CommandLine& commands, Text) { return Raise(commands.wantsVersion); }},
    OptionRow{kReread, {}, 0, [](CommandLine& commands, Text) { return Raise(commands.rereads); }},
    OptionRow{L"--watch", L"PROCESS", 0,
              [](CommandLine& commands, Text value) { return SetProcess(commands.watchedProcess, value); }},
    OptionRow{L"--watched-by", L"PROCESS", 0,
              [](CommandLine& commands, Text value) { return SetProcess(commands.watcherProcess, value); }},
};

bool IsOption(std::wstring_view text) {
    return std::ranges::find(kOptions, text, &OptionRow::name) != kOptions.end();
}

// Reads the option at `place`, and moves `place` past the option and its value.
std::optional<UsageError> ReadOption(CommandLine& commands, std::span<const std::wstring> arguments,
                                     std::size_t& place) {
    const std::wstring& name = arguments[place++];
    const auto row = std::ranges::find(kOptions, std::wstring_view(name), &OptionRow::name);
    if (row == kOptions.end()) return UsageError{UsageFault::UnknownOption, name, {}};
    std::wstring value;
    if (!row->valueName.empty()) {
        if (place == arguments.size() || IsOption(arguments[place])) {
            return UsageError{UsageFault::ValueMissing, name, {}};
        }
        value = arguments[place++];
    }
    if (!row->apply(commands, value)) return UsageError{UsageFault::ValueBad, name, value};
    return std::nullopt;
}

bool AsksForAnything(const CommandLine& commands) {
    return commands.wantsStatus || commands.pause || commands.profile || commands.rereads;
}

bool StandsAlone(const CommandLine& commands) {
    return !AsksForAnything(commands) && !commands.wantsSettings && !commands.wantsTry && !commands.mouse &&
           !commands.logFile;
}

// The start itself carries out an export or import, whether or not a service is running.
std::optional<UsageError> FaultOfTransfer(const CommandLine& commands) {
    if (commands.takesOtherModel && !commands.importFile) return UsageError{UsageFault::YesWithoutImport, {}, {}};
    if (!commands.exportFile && !commands.importFile) return std::nullopt;
    const bool isOne = commands.exportFile.has_value() != commands.importFile.has_value();
    if (isOne && StandsAlone(commands) && !commands.quits) return std::nullopt;
    return UsageError{UsageFault::StandsAlone, std::wstring(commands.exportFile ? kExport : kImport), {}};
}

class ArgumentList {
public:
    void Add(bool isWanted, std::wstring_view name) {
        if (isWanted) arguments.emplace_back(name);
    }
    void Add(std::wstring_view name, const std::optional<std::wstring>& value) {
        if (!value) return;
        arguments.emplace_back(name);
        arguments.push_back(*value);
    }
    std::vector<std::wstring> Take() { return std::move(arguments); }

private:
    std::vector<std::wstring> arguments;
};

}  // namespace

bool CommandLine::Starts() const {
    return mouse || logFile || wantsSettings || wantsTry || !AsksForAnything(*this);
}

std::variant<CommandLine, UsageError> ParseArguments(std::span<const std::wstring> arguments) {
    CommandLine commands;
    for (std::size_t place = 0; place < arguments.size();) {
        if (auto error = ReadOption(commands, arguments, place)) return *error;
    }
    if (commands.quits && !StandsAlone(commands)) {
        return UsageError{UsageFault::QuitStandsAlone, std::wstring(kQuit), {}};
    }
    if (const auto fault = FaultOfTransfer(commands)) return *fault;
    return commands;
}

UsageError BadLogFile(const std::wstring& path) {
    return {UsageFault::ValueBad, std::wstring(kLog), path};
}

std::vector<std::wstring> ArgumentsForService(const CommandLine& commands) {
    ArgumentList list;
    list.Add(commands.quits, kQuit);
    if (commands.mouse) list.Add(kMouse, TextOf(*commands.mouse));
    list.Add(kLog, commands.logFile);
    list.Add(kProfile, commands.profile);
    if (commands.pause) list.Add(true, *commands.pause ? kPause : kResume);
    list.Add(commands.rereads, kReread);
    list.Add(commands.wantsSettings, kSettings);
    list.Add(commands.wantsTry, kTry);
    list.Add(commands.wantsStatus, kStatus);
    return list.Take();
}

std::vector<OptionHelp> ListedOptions() {
    std::vector<OptionHelp> listed;
    for (const OptionRow& row : kOptions) {
        if (row.textId != 0) listed.push_back({row.name, row.valueName, row.textId});
    }
    return listed;
}

}  // namespace kvn::service

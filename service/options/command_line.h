// The meaning of a start's arguments. Pure; a second start passes the same texts to the running service.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "service/options/mouse_option.h"

namespace kvn::service {

inline constexpr std::wstring_view kAutomaticProfile = L"auto";

struct CommandLine {
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool wantsStatus = false;
    bool wantsSettings = false;
    bool wantsTry = false;  // "Try the buttons"
    bool quits = false;
    std::optional<bool> pause;
    std::optional<std::wstring> profile;  // kAutomaticProfile: by the program in front
    std::optional<ChosenMouse> mouse;
    std::optional<std::wstring> logFile;
    std::optional<std::wstring> exportFile;
    std::optional<std::wstring> importFile;
    bool takesOtherModel = false;  // along with importFile

    // For the service and its watcher: the process to watch, and the one that watches.
    std::optional<std::uint32_t> watchedProcess;
    std::optional<std::uint32_t> watcherProcess;
    bool rereads = false;  // from a start that has imported settings

    // Whether to start a service if none is running. The other options need a running one.
    bool Starts() const;
};

enum class UsageFault : std::uint8_t {
    UnknownOption,
    ValueMissing,
    ValueBad,
    QuitStandsAlone,
    StandsAlone,
    YesWithoutImport
};

struct UsageError {
    UsageFault fault = UsageFault::UnknownOption;
    std::wstring option;
    std::wstring value;
};

// The message about a file that --log cannot write to.
UsageError BadLogFile(const std::wstring& path);

// `arguments` does not include the program's name. If an option is given twice, the last one counts.
std::variant<CommandLine, UsageError> ParseArguments(std::span<const std::wstring> arguments);

// The arguments to pass to the running service: all except those that a start handles by itself.
std::vector<std::wstring> ArgumentsForService(const CommandLine& commands);

// For the help text.
struct OptionHelp {
    std::wstring_view name;
    std::wstring_view valueName;  // empty: the option takes no value
    unsigned textId;
};
std::vector<OptionHelp> ListedOptions();

}  // namespace kvn::service

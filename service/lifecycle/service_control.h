// What a start does with the service that runs already: hands it the options, ends it, or has it read the settings
// again.
#pragma once

#include <windows.h>

#include <optional>

#include "service/options/answer.h"
#include "service/options/command_line.h"

namespace kvn::service {

// Longer than a service takes to start or to end; how often to look at it meanwhile.
inline constexpr unsigned kTransitionMilliseconds = 10'000;
inline constexpr unsigned kPollMilliseconds = 50;

// One try; nothing when no service is ready to answer just now.
std::optional<Answer> TryToHandOver(const CommandLine& commands);

// For options that need a running service; waits for one that is starting.
Answer HandOver(const CommandLine& commands);

// Waits until the service and its watcher have ended, if need be by force.
Answer QuitService(const CommandLine& commands);

// The running service takes the changed settings over at once. Any other program that the page would take for one is
// notified as by the page.
void ReportSettingsChanged();

}  // namespace kvn::service

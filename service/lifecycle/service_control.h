// Deals with a service that is already running: hands it the options, ends it, or makes it read the settings again.
#pragma once

#include <windows.h>

#include <optional>

#include "service/options/answer.h"
#include "service/options/command_line.h"

namespace kvn::service {

// Longer than a service takes to start or to end; and the time between two checks.
inline constexpr unsigned kTransitionMilliseconds = 10'000;
inline constexpr unsigned kPollMilliseconds = 50;

// One try; nothing if no service is ready to answer now.
std::optional<Answer> TryToHandOver(const CommandLine& commands);

// For options that need a running service; waits for one that is starting.
Answer HandOver(const CommandLine& commands);

// Waits until the service and its watcher have ended, if need be by force.
Answer QuitService(const CommandLine& commands);

// Makes the running service read the changed settings at once. If the page would take another program for the service,
// notifies that one as the page does.
void ReportSettingsChanged();

}  // namespace kvn::service

// The world around the page in one test: registry, profile file, service and host. Each test has its own, and removes
// them afterwards.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/end_to_end/process.h"
#include "tests/end_to_end/sheet_driver.h"
#include "tests/end_to_end/watchdog.h"

namespace kvn::end_to_end {

using Arguments = std::vector<std::wstring>;

// Lines of the service's log.
inline constexpr char kProbe[] = "32771 (0x8003) Probe wParam=0 lParam=0 reply=1 sent";
inline constexpr char kSettingsChanged[] = "32770 (0x8002) SettingsChanged wParam=0 lParam=0 reply=0 posted";

// The sample mouse has the ids 0x1234 and 0x5678.
inline constexpr wchar_t kProfileFileName[] = L"VID1234PID5678.xml";

class EndToEndTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the service and waits until it is ready.
    void StartService(const Arguments& options = {}, const std::wstring& program = ServiceProgram());
    // Starts the service's program a second time, to pass the options to the running one.
    void AskService(const Arguments& options) const;
    // Ends the service, which first handles all posted messages.
    void EndService();
    // The page's messages to the service so far, in order.
    std::vector<std::string> MessagesToService() const;
    // All lines of the service's log, without their times.
    std::vector<std::string> LinesOfLog() const;

    // Starts the host, which opens the sheet.
    const Process& StartHost(const Arguments& source = WithModule());
    // Starts the host and waits for the sheet.
    Sheet OpenSheet(const Arguments& source = WithModule());
    // Starts the service and opens the sheet.
    Sheet OpenSheetWithService(const Arguments& serviceOptions = {});
    // Waits until the host that was started last has ended.
    DWORD HostExitCode() const { return host->WaitForExitCode(); }
    // Another program.
    Process StartProgram(const std::wstring& program) const { return processes.Start(program, {}); }
    // Runs the host for work without a sheet; returns its exit code.
    DWORD RunHost(const Arguments& options) const;

    // Where the host takes the page from: the module as a file, or the registered handlers.
    static Arguments WithModule() { return {L"--dll", ModulePath()}; }
    static Arguments WithHandlers() { return {}; }
    static std::wstring ServiceProgram();
    static std::wstring ModulePath();

    // A separate folder for the test, with its final backslash.
    const std::wstring& Scratch() const { return scratch; }
    static std::wstring ProfileFile();

private:
    ProcessGroup processes;
    Watchdog watchdog{processes};
    std::wstring scratch;
    std::optional<Process> service;
    std::optional<Process> host;
};

}  // namespace kvn::end_to_end

// The real program, started as by users and scripts.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/unique_resource.h"

namespace kvn::service_test {

using Arguments = std::vector<std::wstring>;

// A mouse that no test machine has.
inline const Arguments kSample{L"--mouse", L"1234:5678:7:1:KvnSample"};

struct Outcome {
    DWORD exitCode = STILL_ACTIVE;  // if it does not end
    std::string output;
};

// A separate service for the test, in a registry without published values. Processes that still run at the end are
// killed.
class ServiceProgramTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Runs a start that ends by itself.
    Outcome Run(const Arguments& arguments) const;
    // The same, without a standard output; returns its exit code.
    DWORD RunWithoutOutput(const Arguments& arguments) const;
    // Makes a start that becomes the service; returns when the page would find it.
    void StartService(const Arguments& arguments = kSample);

    // The service's window, and its process; none without a service.
    static HWND Window();
    static DWORD ServiceProcess();
    // A dialog that the service shows, other than this one; null without.
    static HWND Dialog(HWND other = nullptr);
    // Waits until another process than this one is the service.
    static DWORD AwaitServiceOtherThan(DWORD process);

    // Whether the start that became the service has ended, and how.
    std::optional<DWORD> ExitCodeOfService() const;
    // The number of running processes of these starts.
    int RunningProcesses() const;
    static void Kill(DWORD process);

    // The output of --status, by key.
    std::map<std::string, std::string> Status() const;

    // The answer of the service's window. Waits for some seconds.
    static LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

private:
    platform::UniqueKernelObject Create(const Arguments& arguments, HANDLE output) const;

    platform::UniqueKernelObject job;
    platform::UniqueKernelObject service;
};

}  // namespace kvn::service_test

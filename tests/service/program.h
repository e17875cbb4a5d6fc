// The real program, started as users and scripts start it.
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
    DWORD exitCode = STILL_ACTIVE;  // when it does not end
    std::string output;
};

// A service of the test's own, in a registry without anything published. Whatever still runs at the end is killed.
class ServiceProgramTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A start that ends by itself.
    Outcome Run(const Arguments& arguments) const;
    // The same without a standard output; its exit code.
    DWORD RunWithoutOutput(const Arguments& arguments) const;
    // A start that becomes the service; returns when the page would find it.
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
    // How many processes run that these starts have made.
    int RunningProcesses() const;
    static void Kill(DWORD process);

    // The output of --status, by key.
    std::map<std::string, std::string> Status() const;

    // The answer of the service's window, within seconds.
    static LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

private:
    platform::UniqueKernelObject Create(const Arguments& arguments, HANDLE output) const;

    platform::UniqueKernelObject job;
    platform::UniqueKernelObject service;
};

}  // namespace kvn::service_test

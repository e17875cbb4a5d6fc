// The whole service in this process and thread, with a separate user and mouse. Its watcher is a second start of this
// program.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "service/application.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::test {

class ApplicationTest : public testing::Test {
protected:
    ~ApplicationTest() override;

    // Starts it with these options, usually with a mouse; false if there is no service afterwards.
    bool Start(const std::wstring& options = L"--mouse 0abc:00a1:5:1");
    void End() { application.reset(); }
    service::Application& Get() { return *application; }

    static HWND Window();
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // The answer to the page's probe; 1 from a healthy service.
    LRESULT Probe() const;
    static service::CommandLine Options(const std::wstring& text);
    // The output of --status.
    std::wstring StatusText();
    // Whether all keys and buttons that the service has pressed are up.
    static bool IsNothingHeld();

private:
    SandboxedUser user;
    SandboxedHive machine{HKEY_LOCAL_MACHINE};
    std::unique_ptr<service::Application> application;
};

}  // namespace kvn::test

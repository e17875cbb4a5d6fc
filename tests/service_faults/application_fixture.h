// The service as one, in this process and thread, with a user and a mouse of the test's own. Its watcher is this
// program once more.
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

    // With the options of a start, usually with a mouse; false when there is no service then.
    bool Start(const std::wstring& options = L"--mouse 0abc:00a1:5:1");
    void End() { application.reset(); }
    service::Application& Get() { return *application; }

    static HWND Window();
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // What the page asks first; 1 from a service that is well.
    LRESULT Probe() const;
    static service::CommandLine Options(const std::wstring& text);
    // What --status prints.
    std::wstring StatusText();
    // Whether all that the service has pressed is up.
    static bool IsNothingHeld();

private:
    SandboxedUser user;
    SandboxedHive machine{HKEY_LOCAL_MACHINE};
    std::unique_ptr<service::Application> application;
};

}  // namespace kvn::test

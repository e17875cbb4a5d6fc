// A separate Windows user for the test: registry hives and an application-data folder that no other program uses,
// removed afterwards.
#pragma once

#include <windows.h>

#include <string>

#include "platform/unique_resource.h"

namespace kvn::test {

// While it lives, this process finds an empty key in place of one of the registry's roots.
class SandboxedHive {
public:
    explicit SandboxedHive(HKEY root);
    SandboxedHive(const SandboxedHive&) = delete;
    SandboxedHive& operator=(const SandboxedHive&) = delete;
    ~SandboxedHive();

private:
    HKEY overriddenRoot;
    platform::UniqueRegistryKey sandbox;
    std::wstring path;
};

// If the shell cannot be given another folder for application data, the user's own is used, but only if the environment
// variable KVN_USER_IS_SAVED says that its contents have been saved.
class SandboxedUser {
public:
    SandboxedUser();
    SandboxedUser(const SandboxedUser&) = delete;
    SandboxedUser& operator=(const SandboxedUser&) = delete;
    ~SandboxedUser();

    // Without a final backslash.
    const std::wstring& ApplicationData() const { return applicationData; }
    std::wstring SettingsFolder() const { return applicationData + L"\\KORVEN\\Tarsel3"; }

private:
    SandboxedHive hive;
    std::wstring ownFolder;
    std::wstring applicationData;  // usually the same
};

}  // namespace kvn::test

// Shared by the tests of the settings store: a user and a machine of the test's own, and one mouse model.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/settings_store.h"
#include "tests/model_windows/files.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::model {

using kvn::test::kModelKey;

class SettingsStore : public testing::Test {
protected:
    static constexpr wchar_t kFileName[] = L"VID0abcPID00a1.xml";
    static constexpr SettingValues kInitialValues{{11, 12, 13, 14, 15, 6, 17, 18, 9, 10, 5}};

    SettingsStore() {
        settings.device.vid = 0x0ABC;
        settings.device.pid = 0x00A1;
        settings.device.buttonCount = 5;
        settings.initialValues = kInitialValues;
    }

    const kvn::test::SandboxedUser& User() const { return user; }
    std::wstring Path() const { return user.SettingsFolder() + L'\\' + kFileName; }

    void WriteFile(const std::string& bytes) const {
        CreateDirectoryW((user.ApplicationData() + L"\\KORVEN").c_str(), nullptr);
        CreateDirectoryW(user.SettingsFolder().c_str(), nullptr);
        test::WriteBytes(Path(), bytes);
    }

    std::vector<std::wstring> FilesInFolder() const { return test::NamesIn(user.SettingsFolder()); }
    static auto StoredValues() { return kvn::test::StoredValues(kModelKey); }

    static void SetMachineWideCenter(DWORD code) {
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, kDefaultBindKey, kDefaultCenterValue, REG_DWORD, &code, sizeof code);
    }

    MouseSettings settings;

private:
    kvn::test::SandboxedUser user;
    kvn::test::SandboxedHive machine{HKEY_LOCAL_MACHINE};
};

}  // namespace kvn::model

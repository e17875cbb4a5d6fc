// A separate user with a mouse, and files for export and import.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <map>
#include <string>

#include "model/profile_file.h"
#include "service/transfer/settings_export.h"
#include "service/transfer/settings_import.h"
#include "tests/model_windows/files.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"
#include "tests/support/written_profiles.h"

namespace kvn::service_test {

inline constexpr wchar_t kModelName[] = L"VID0abcPID00a1";
inline constexpr char kHead[] = "<vid>2748</vid><pid>161</pid><select_profile>0</select_profile>";

// A file for the mouse of the tests.
inline std::string SettingsText(const std::string& profiles, const std::string& head = kHead) {
    return "<data>" + head + profiles + "</data>";
}

class SettingsTransferTest : public testing::Test {
protected:
    // Everything that an import could change.
    struct Stored {
        std::map<std::wstring, std::string> files;
        std::map<std::wstring, test::StoredValue> values;

        friend bool operator==(const Stored&, const Stored&) = default;
    };

    SettingsTransferTest() { test::PublishMouse({}); }

    std::wstring File(const std::wstring& name) const { return user.ApplicationData() + L'\\' + name; }
    std::wstring Folder() const { return user.SettingsFolder(); }
    std::wstring ProfileFile() const { return Folder() + L'\\' + kModelName + L".xml"; }
    static std::wstring ModelKey() { return std::wstring(test::kMouseKey) + L'\\' + kModelName; }

    std::wstring WriteFile(const std::string& text, const std::wstring& name = L"settings.xml") const {
        test::WriteFileText(File(name), text);
        return File(name);
    }
    void WriteProfileFile(const std::string& text) const { test::WriteFileText(ProfileFile(), text); }

    // The state after an apply of the page, and after another import.
    void HaveEarlierSettings() const {
        WriteProfileFile(SettingsText(test::ProfileText("Earlier", {{"lbutton", "5"}}) + test::ProfileText("Other")));
        const DWORD number = 5;
        RegSetKeyValueW(HKEY_CURRENT_USER, ModelKey().c_str(), L"BindKeyLeft", REG_DWORD, &number, sizeof number);
        RegSetKeyValueW(HKEY_CURRENT_USER, ModelKey().c_str(), L"BindKeyRight", REG_BINARY, &number, 3);
        RegSetKeyValueW(HKEY_CURRENT_USER, ModelKey().c_str(), L"SomethingElse", REG_SZ, L"x", 4);
    }

    Stored WhatIsStored() const {
        Stored stored;
        for (const std::wstring& name : model::test::NamesIn(Folder())) {
            stored.files[name] = model::test::ReadBytes(Folder() + L'\\' + name);
        }
        stored.values = test::StoredValues(ModelKey());
        return stored;
    }

    static bool HasModelKey() {
        platform::UniqueRegistryKey key;
        return RegOpenKeyExW(HKEY_CURRENT_USER, ModelKey().c_str(), 0, KEY_READ, key.Receive()) == ERROR_SUCCESS;
    }

    static service::Answer Import(const std::wstring& file) {
        return service::ImportSettings(file, [](const auto&, const auto&) { return false; });
    }

    static model::ProfileSet Loaded(const std::wstring& path) {
        model::ProfileSet profiles;
        model::LoadProfileFile(path, profiles);
        return profiles;
    }

    static bool Has(const service::Answer& answer, const std::wstring& text) {
        return answer.text.find(text) != std::wstring::npos;
    }

private:
    test::SandboxedUser user;
};

}  // namespace kvn::service_test

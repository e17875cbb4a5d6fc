// A hub with a user, a machine and a mouse of the test's own, and its reports.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "service/settings/settings_hub.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"
#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::service {

using kvn::test::kModelKey;

class HubFixture : public testing::Test {
protected:
    static constexpr wchar_t kFileName[] = L"VID0abcPID00a1.xml";
    using Problem = std::pair<SettingsProblem, std::wstring>;

    static model::DeviceRecord Mouse() {
        return {.hasTilt = 1, .buttonCount = 7, .vid = 0x0ABC, .pid = 0x00A1, .mouseImage = L"", .mouseFlag = 0};
    }

    void StartHub() {
        hub = std::make_unique<SettingsHub>(
            activity, profileNumbers,
            SettingsHub::Outlets{[this](const ProfileInForce& profile) { Note(heard, profile); },
                                 [this](HWND window) { Note(windows, window); },
                                 [this](SettingsProblem problem, const std::wstring& path) {
                                     Note(problems, Problem{problem, path});
                                 }});
        ASSERT_TRUE(hub->Start());
    }
    // With the mouse, and read.
    void StartReadHub() {
        StartHub();
        hub->UseMouse(Mouse());
        ASSERT_TRUE(kvn::test::ComesTrue([this] { return !Heard().empty(); }));
    }
    void EndHub() { hub.reset(); }

    SettingsHub& Hub() { return *hub; }
    std::vector<ProfileInForce> Heard() const { return Copied(heard); }
    std::vector<HWND> Windows() const { return Copied(windows); }
    std::vector<Problem> Problems() const { return Copied(problems); }
    bool BecomesInForce(const std::wstring& name) const {
        return kvn::test::ComesTrue([&] { return hub->InForce().name == name; });
    }
    model::FunctionCode LeftFunction() const { return hub->InForce().settings.functions[model::ButtonSlot::Left]; }
    bool LeftFunctionBecomes(model::FunctionCode code) const {
        return kvn::test::ComesTrue([&] { return LeftFunction() == code; });
    }
    const kvn::test::SandboxedUser& User() const { return user; }
    std::wstring FilePath() const { return user.SettingsFolder() + L'\\' + kFileName; }
    void MakeFolder() const {
        CreateDirectoryW((user.ApplicationData() + L"\\KORVEN").c_str(), nullptr);
        CreateDirectoryW(user.SettingsFolder().c_str(), nullptr);
    }
    void WriteFile(const std::vector<std::string>& profiles, int selected = 0) const {
        WriteBytes(kvn::test::ProfileFileText(profiles, selected));
    }
    // As the page saves: another file takes its place.
    void WriteBytes(const std::string& bytes) const {
        MakeFolder();
        const std::wstring unfinished = FilePath() + L".saving";
        kvn::test::WriteFileText(unfinished, bytes);
        ASSERT_TRUE(kvn::test::ComesTrue(
            [&] { return MoveFileExW(unfinished.c_str(), FilePath().c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE; }));
    }
    static void SetNumber(const wchar_t* value, DWORD number, const wchar_t* key = kModelKey) {
        RegSetKeyValueW(HKEY_CURRENT_USER, key, value, REG_DWORD, &number, sizeof number);
    }
    // As the hook does at each event.
    void MoveMouse() {
        activity.lastEvent = GetTickCount();
        if (activity.isSomeoneAsleep.exchange(false)) SetEvent(activity.wake.Get());
    }

    MouseActivity activity;
    ProfileNumbers profileNumbers;

private:
    template <typename T>
    void Note(std::vector<T>& list, const T& entry) {
        const std::lock_guard guard(mutex);
        list.push_back(entry);
    }
    template <typename T>
    std::vector<T> Copied(const std::vector<T>& list) const {
        const std::lock_guard guard(mutex);
        return list;
    }

    kvn::test::SandboxedUser user;
    kvn::test::SandboxedHive machine{HKEY_LOCAL_MACHINE};
    mutable std::mutex mutex;
    std::vector<ProfileInForce> heard;
    std::vector<HWND> windows;
    std::vector<Problem> problems;
    std::unique_ptr<SettingsHub> hub;
};

}  // namespace kvn::service

// The fixture of the tests of failing Windows functions and services: a bare page with pictures, programs and profiles,
// and a user who goes through all of it.
#pragma once

#include <windows.h>

#include <psapi.h>
#include <shellapi.h>
#include <shlobj.h>

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/com_pointer.h"
#include "resources/resource.h"
#include "tests/faults/bare_page.h"
#include "tests/faults/leak_check.h"
#include "tests/support/access_violations.h"
#include "tests/support/fake_service.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::test {

inline constexpr UINT_PTR kCaptureTimer = 221;

class WholePageTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Restores the user's state before the first tour: two profiles, and a mouse with the gesture function.
    void StartOver() const;
    // Uses everything that the page offers, and applies; returns the answer.
    bool GoThroughThePage();
    // A tour without faults, from the start, leaves exactly this behind.
    struct Saved {
        std::string file;
        std::map<std::wstring, StoredValue> values;
        friend bool operator==(const Saved&, const Saved&) = default;
    };
    Saved State() const;
    void ExpectWholeTour(const Saved& whole);
    // The state after such a tour; the page is closed.
    Saved StateAfterTour();

    void ExpectNoDamage() const;
    void CloseAndExpectNoLeak();
    std::wstring ProfilePath() const { return user.SettingsFolder() + L"\\" + mouse.Name() + L".xml"; }

    // Sets the user's actions in the dialogs.
    void UseDialogs();
    void DrawGesture(HWND editor);
    static void Tick(HWND editor) { SendMessageW(editor, WM_TIMER, kCaptureTimer, 0); }

    std::optional<platform::ComApartment> apartment;  // during a test
    SandboxedUser user;
    std::wstring folder = user.ApplicationData() + L"\\service";
    PublishedMouse mouse;
    std::optional<FakeService> service{std::in_place};
    ModuleUnderTest module;
    ModuleMemory memory{module.Handle()};
    BarePage page{module};
    std::optional<LeakCheck> leaks;       // from the first tour to the end of the test
    std::vector<std::wstring> helpFiles;  // the help files that were opened
    bool hasFileName = true;              // the service's process reports the path of its program

private:
    const AccessViolations violations;
    const ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> fileName{
        module.Handle(), [this](HANDLE, HMODULE, LPWSTR buffer, DWORD size) -> DWORD {
            if (!hasFileName) return 0;
            lstrcpynW(buffer, (folder + L"\\KvnMouseApl.exe").c_str(), static_cast<int>(size));
            return static_cast<DWORD>(lstrlenW(buffer));
        }};
    const ReplacedImport<"ShellExecuteW", decltype(ShellExecuteW)> execute{
        module.Handle(), [this](HWND, LPCWSTR, LPCWSTR file, LPCWSTR, LPCWSTR, INT) {
            helpFiles.emplace_back(file);
            return reinterpret_cast<HINSTANCE>(INT_PTR{33});
        }};
    const ReplacedImport<"mouse_event", void(DWORD, DWORD, DWORD, DWORD, ULONG_PTR)> click{
        module.Handle(), [](DWORD, DWORD, DWORD, DWORD, ULONG_PTR) {}};
    const ReplacedImport<"Sleep", decltype(Sleep)> sleep{module.Handle(), [](DWORD) {}};
    const ReplacedImport<"SHGetPathFromIDListW", decltype(SHGetPathFromIDListW)> path{
        module.Handle(), [this](LPCITEMIDLIST items, LPWSTR found) -> WINBOOL {
            if (!SHGetPathFromIDListW(items, found)) return FALSE;
            if (std::wstring_view(found) != user.ApplicationData()) lstrcpyW(found, (folder + L"\\Programs").c_str());
            return TRUE;
        }};
};

}  // namespace kvn::test

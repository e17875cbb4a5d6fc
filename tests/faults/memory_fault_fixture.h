// The fixture of the tests of refused memory: a user with profiles of every kind, a service, the bare page, and control
// over the module's memory.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "tests/faults/bare_page.h"
#include "tests/faults/leak_check.h"
#include "tests/support/access_violations.h"
#include "tests/support/fake_service.h"
#include "tests/support/module_memory.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::test {

// Not plain ASCII, so that a Windows function decodes it.
inline constexpr char kFirstProfile[] =
    "D\xE9"
    "faut";

class MemoryFaultTest : public testing::Test {
protected:
    void SetUp() override;

    struct Sweep {
        std::function<void()> prepare;     // with all memory available
        std::function<void()> operation;   // with refusals
        std::function<void()> check;       // what must hold afterwards, with all memory available again
        std::function<bool()> isEnough{};  // ends the sweep early
    };
    // Whether only one allocation is refused or every later one too, and which share of the rounds to run.
    struct Rounds {
        bool once;
        int first = 1;
        int step = 1;
    };
    // Repeats the operation with its first allocation refused, then its second, and so on, until none is refused.
    // Returns the number of rounds.
    int SweepRefusals(const Rounds& rounds, const Sweep& sweep);
    // All rounds of both kinds.
    void SweepRefusals(const Sweep& sweep);

    // Expects what must hold after any fault: an apply succeeds and notifies the service.
    void ExpectSuccessfulApply();
    // Writes every value that a profile can have; if there is another profile, by switching to it.
    void ApplyEverything();
    void CloseAndExpectNoLeak();

    // The state on disk and in the registry.
    struct SavedState {
        std::string file;  // empty if there is none
        std::map<std::wstring, StoredValue> values;

        friend bool operator==(const SavedState&, const SavedState&) = default;
    };
    SavedState State() const;
    // Two profiles with keys, gestures and programs; the first is selected.
    void WriteProfilesOfEveryKind() const;
    void ForgetProfiles() const;
    void ForgetValues() const { RegDeleteTreeW(HKEY_CURRENT_USER, mouse.Key().c_str()); }
    void ExpectNoUnfinishedFile() const;

    std::wstring ProfilePath() const { return user.SettingsFolder() + L"\\" + mouse.Name() + L".xml"; }

    SandboxedUser user;
    PublishedMouse mouse;
    FakeService service;
    ModuleUnderTest module;
    ModuleMemory memory{module.Handle()};
    BarePage page{module};

private:
    void ExpectNoDamage() const;

    const AccessViolations violations;
    const ReplacedImport<"Sleep", decltype(Sleep)> sleep{module.Handle(), [](DWORD) {}};
    const ReplacedImport<"mouse_event", void(DWORD, DWORD, DWORD, DWORD, ULONG_PTR)> click{
        module.Handle(), [](DWORD, DWORD, DWORD, DWORD, ULONG_PTR) {}};
    std::size_t blocksAtRest = 0;
};

}  // namespace kvn::test

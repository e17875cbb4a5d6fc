// Registry calls that fail, one after another.
#include <windows.h>

#include <gtest/gtest.h>

#include "resources/resource.h"
#include "tests/faults/bare_page.h"
#include "tests/faults/leak_check.h"
#include "tests/support/fake_service.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"
#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::test {
namespace {

using platform::ServiceMessage;
using Values = std::map<std::wstring, StoredValue>;

constexpr int kNumbers = 11;
constexpr int kAllValues = 20;  // numbers, keys and lists
constexpr int kReadAttempts = 10;

// Counts the calls of the registry functions and makes some of them fail.
class FaultyRegistry {
public:
    explicit FaultyRegistry(HMODULE module)
        : setValue(module,
                   [this](HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) -> LSTATUS {
                       written.emplace_back(name);
                       if (sets.Fails()) return ERROR_ACCESS_DENIED;
                       return RegSetValueExW(key, name, reserved, type, data, size);
                   }),
          createKey(module,
                    [this](HKEY root, LPCWSTR path, DWORD reserved, LPWSTR className, DWORD options, REGSAM access,
                           LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD disposition) -> LSTATUS {
                        if (creations.Fails()) return ERROR_ACCESS_DENIED;
                        return RegCreateKeyExW(root, path, reserved, className, options, access, security, key,
                                               disposition);
                    }),
          openKey(module,
                  [this](HKEY root, LPCWSTR path, DWORD options, REGSAM access, PHKEY key) -> LSTATUS {
                      if (opens.Fails()) return ERROR_FILE_NOT_FOUND;
                      return RegOpenKeyExW(root, path, options, access, key);
                  }),
          queryValue(
              module,
              [this](HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, BYTE* data, LPDWORD size) -> LSTATUS {
                  if (queries.Fails()) return ERROR_FILE_NOT_FOUND;
                  return RegQueryValueExW(key, name, reserved, type, data, size);
              }),
          sleep(module, [](DWORD) {}) {}

    struct Calls {
        int first = 0;  // the calls that fail; counted from 1
        int last = 0;
        int count = 0;

        void Fail(int from, int to) { *this = {from, to, 0}; }
        bool Fails() {
            ++count;
            return count >= first && count <= last;
        }
    };
    Calls sets;
    Calls creations;
    Calls opens;
    Calls queries;
    std::vector<std::wstring> written;  // the values that the page tried to set, including failed ones

    void FailNothing() {
        for (Calls* calls : {&sets, &creations, &opens, &queries}) calls->Fail(0, 0);
        written.clear();
    }

private:
    ReplacedImport<"RegSetValueExW", decltype(RegSetValueExW)> setValue;
    ReplacedImport<"RegCreateKeyExW", decltype(RegCreateKeyExW)> createKey;
    ReplacedImport<"RegOpenKeyExW", decltype(RegOpenKeyExW)> openKey;
    ReplacedImport<"RegQueryValueExW", decltype(RegQueryValueExW)> queryValue;
    ReplacedImport<"Sleep", decltype(Sleep)> sleep;
};

class RegistryFaultTest : public testing::Test {
protected:
    void SetUp() override {
        PublishMouse(mouse);
        WarmUp(memory, page);
        DeleteFileW(ProfilePath().c_str());
        RegDeleteTreeW(HKEY_CURRENT_USER, mouse.Key().c_str());
        registry.FailNothing();
        page.ForgetMessages();
        leaks.emplace(module, memory, page);
    }
    void TearDown() override {
        page.Close();
        if (leaks && !HasFailure()) leaks->ExpectNothing();
    }

    std::wstring ProfilePath() const { return user.SettingsFolder() + L"\\" + mouse.Name() + L".xml"; }
    std::string Saved() const { return ReadFileText(ProfilePath()); }
    Values ModelValues() const { return StoredValues(mouse.Key()); }

    // The first profile is like a new one; the second differs from it in every value.
    void WriteProfiles() const {
        const std::string other =
            ProfileText("Other", {{"lbutton", "2"},
                                  {"lbutton_etcKey", "A"},
                                  {"rbutton", "1"},
                                  {"rbutton_etcKey", "B"},
                                  {"tbutton", "10"},
                                  {"tbutton_etcKey", "C"},
                                  {"button4", "11"},
                                  {"button4_etcKey", "D"},
                                  {"button5", "12"},
                                  {"button5_etcKey", "E"},
                                  {"scrolls", "8"},
                                  {"tiltleft", "13"},
                                  {"tiltleft_etcKey", "F"},
                                  {"tiltright", "14"},
                                  {"tiltright_etcKey", "G"},
                                  {"hspeed", "9"},
                                  {"hlotate", "10"},
                                  {"hcount", "5"},
                                  {"Application", "<name>n</name><path>C:\\p.exe</path>"},
                                  {"Gesture", "<Key>UR</Key><Function>3</Function><Memo>m</Memo>"}});
        WriteFileText(ProfilePath(), ProfileFileText({ProfileText("Default"), other}));
    }

    std::size_t Notices() const { return service.CountOf(ServiceMessage::SettingsChanged); }

    void ExpectSuccessfulApply() {
        page.ForgetMessages();
        const std::size_t before = Notices();
        EXPECT_TRUE(page.Apply());
        EXPECT_TRUE(page.Messages().empty());
        EXPECT_EQ(Notices(), before + 1);
    }

    // The k-th write of an apply of all values fails, for every k.
    void FailEachWriteOfAnApply(FaultyRegistry::Calls FaultyRegistry::*calls) {
        WriteProfiles();
        page.AddAndOpen();
        page.ChooseProfile(1);
        ExpectSuccessfulApply();
        const Values all = ModelValues();
        ASSERT_EQ(static_cast<int>(all.size()), kAllValues);
        page.Close();
        const std::vector<std::wstring> order = registry.written;

        for (int k = 1; k <= kAllValues; ++k) {
            SCOPED_TRACE(k);
            WriteProfiles();
            RegDeleteTreeW(HKEY_CURRENT_USER, mouse.Key().c_str());
            registry.FailNothing();
            page.AddAndOpen();
            page.ChooseProfile(1);
            const std::string file = Saved();
            const std::size_t notices = Notices();
            (registry.*calls).Fail(k, k);
            page.ForgetMessages();
            EXPECT_FALSE(page.Apply());
            EXPECT_EQ(page.Messages(), std::vector<std::wstring>{L"Settings failed."});
            EXPECT_EQ(Saved(), file);
            Values others = all;
            others.erase(order[static_cast<std::size_t>(k) - 1]);
            EXPECT_EQ(ModelValues(), others);

            registry.FailNothing();
            ExpectSuccessfulApply();
            EXPECT_EQ(Notices(), notices + 1) << "the service was notified of the failed apply";
            EXPECT_EQ(ModelValues(), all);
            EXPECT_NE(Saved(), file);
            page.Close();
            leaks->ExpectNoBlocks();
        }
    }

    // The k-th write of a new profile's numbers fails, for every k.
    void FailEachWriteOfANewProfile(FaultyRegistry::Calls FaultyRegistry::*calls) {
        page.AddAndOpen();
        const std::string file = Saved();
        const Values all = ModelValues();
        const std::vector<std::wstring> order = registry.written;
        ASSERT_EQ(static_cast<int>(all.size()), kNumbers);
        page.Close();
        for (int k = 1; k <= kNumbers; ++k) {
            SCOPED_TRACE(k);
            DeleteFileW(ProfilePath().c_str());
            RegDeleteTreeW(HKEY_CURRENT_USER, mouse.Key().c_str());
            registry.FailNothing();
            (registry.*calls).Fail(k, k);
            page.AddAndOpen();
            EXPECT_EQ(Saved(), file);
            Values others = all;
            others.erase(order[static_cast<std::size_t>(k) - 1]);
            EXPECT_EQ(ModelValues(), others);

            registry.FailNothing();
            ExpectSuccessfulApply();
            EXPECT_EQ(registry.written, std::vector<std::wstring>{order[static_cast<std::size_t>(k) - 1]});
            EXPECT_EQ(ModelValues(), all);
            page.Close();
            leaks->ExpectNoBlocks();
        }
    }

    // Reads fail from the k-th on until no attempts are left, for every value of the mouse.
    void FailEachReadOfTheMouse(FaultyRegistry::Calls FaultyRegistry::*calls) {
        constexpr int kMouseValues = 6;
        WriteProfiles();
        for (int value = 1; value <= kMouseValues; ++value) {
            for (const int failures : {1, kReadAttempts - 1, kReadAttempts}) {
                SCOPED_TRACE(std::to_string(value) + ", " + std::to_string(failures) + " times");
                registry.FailNothing();
                page.ForgetMessages();
                page.Add();
                // The first call looks for the machine-wide default, which does not exist here.
                const int before = &FaultyRegistry::opens == calls ? 1 : 0;
                (registry.*calls).Fail(before + value, before + value + failures - 1);
                page.Open();
                const bool isLost = failures == kReadAttempts;
                EXPECT_EQ(CountOf(L"Failed to obtain mouse settings."), isLost ? 1U : 0U);
                EXPECT_EQ(IsWindowEnabled(page.PaneControl(IDC_PANE_LEFT)), isLost ? FALSE : TRUE);
                registry.FailNothing();
                ExpectSuccessfulApply();
                page.Close();
                leaks->ExpectNoBlocks();
            }
        }
    }

    std::size_t CountOf(const std::wstring& text) const {
        std::size_t count = 0;
        for (const std::wstring& message : page.Messages()) count += message == text ? 1 : 0;
        return count;
    }

    SandboxedUser user;
    PublishedMouse mouse;
    FakeService service;
    ModuleUnderTest module;
    ModuleMemory memory{module.Handle()};
    BarePage page{module};
    std::optional<LeakCheck> leaks;
    FaultyRegistry registry{module.Handle()};
};

TEST_F(RegistryFaultTest, AnyOneValueThatCannotBeSetFailsTheApplyAndTheNextApplyRepairsIt) {
    FailEachWriteOfAnApply(&FaultyRegistry::sets);
}

TEST_F(RegistryFaultTest, AnyOneKeyThatCannotBeOpenedForWritingFailsTheApplyAndTheNextApplyRepairsIt) {
    FailEachWriteOfAnApply(&FaultyRegistry::creations);
}

TEST_F(RegistryFaultTest, ANumberOfANewProfileThatCannotBeSetIsWrittenByTheNextApply) {
    FailEachWriteOfANewProfile(&FaultyRegistry::sets);
}

TEST_F(RegistryFaultTest, ANumberOfANewProfileWhoseKeyCannotBeOpenedIsWrittenByTheNextApply) {
    FailEachWriteOfANewProfile(&FaultyRegistry::creations);
}

TEST_F(RegistryFaultTest, AValueOfTheMouseIsReadTenTimesBeforeItCountsAsMissing) {
    FailEachReadOfTheMouse(&FaultyRegistry::queries);
}

TEST_F(RegistryFaultTest, TheKeyOfTheMouseIsOpenedTenTimesBeforeItCountsAsMissing) {
    FailEachReadOfTheMouse(&FaultyRegistry::opens);
}

}  // namespace
}  // namespace kvn::test

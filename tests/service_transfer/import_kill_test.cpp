// Imports that are killed: before each call that changes something, and at random moments.
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <shlobj.h>

#include "model/profile_list.h"
#include "model/registry_access.h"
#include "model/settings_store.h"
#include "model/stored_settings.h"
#include "platform/unique_resource.h"
#include "tests/model_windows/files.h"
#include "tests/service_transfer/transfer_fixture.h"
#include "tests/support/started_process.h"

namespace kvn::service_test {
namespace {

constexpr DWORD kKilled = 99;
constexpr DWORD kPatience = 30'000;
constexpr int kMostCalls = 500;

// The user's own registry and folder, which other processes find too, with a mouse that does not exist.
class ImportKillTest : public testing::Test {
protected:
    static constexpr std::uint32_t kVid = 0xFEDC;
    static constexpr std::uint32_t kPid = 0xBA98;

    void SetUp() override {
        RemoveAll();
        test::PublishMouse({.vid = kVid, .pid = kPid});
        model::MakeFolder(model::SettingsFolder());
        model::ProfileSet earlier = Profiles(L"Earlier", 5);
        ASSERT_TRUE(model::ExportProfileFile(File(), earlier));
        earlierBytes = model::test::ReadBytes(File());
        ASSERT_TRUE(model::ExportProfileFile(New(), Profiles(L"New", 7)));
        newBytes = model::test::ReadBytes(New());
        WriteEarlier();
    }
    void TearDown() override { RemoveAll(); }

    static model::ProfileSet Profiles(const std::wstring& name, std::int32_t function) {
        model::ProfileSet profiles(2, model::DefaultProfileRecord());
        for (std::size_t index = 0; index < profiles.size(); ++index) {
            profiles[index].name = name + std::to_wstring(index);
            for (const model::ButtonSlotRow& row : model::kButtonSlots) {
                profiles[index].settings[row.field] = function + static_cast<std::int32_t>(index);
            }
            profiles[index].settings.gestures = {{L"U", function, name, {}}};
        }
        profiles.front().vid = kVid;
        profiles.front().pid = kPid;
        profiles.front().selectedIndex = 1;
        return profiles;
    }

    static std::wstring File() { return model::SettingsFolder() + model::ProfileFileName(kVid, kPid); }
    static std::wstring New() { return model::SettingsFolder() + L"VIDfedcPIDba98-new.xml"; }
    static std::vector<std::wstring> KeptFiles() {
        std::vector<std::wstring> kept;
        for (const std::wstring& name : model::test::NamesIn(model::SettingsFolder())) {
            if (name.starts_with(L"VIDfedcPIDba98.before-import-") && name.ends_with(L".xml")) kept.push_back(name);
        }
        return kept;
    }

    void RemoveAll() const {
        for (const std::wstring& name : model::test::NamesIn(model::SettingsFolder())) {
            if (name.starts_with(L"VIDfedcPIDba98")) DeleteFileW((model::SettingsFolder() + name).c_str());
        }
        RegDeleteTreeW(HKEY_CURRENT_USER, test::kMouseKey);
    }

    // The earlier settings on disk and, as after an apply, in the registry.
    void WriteEarlier() const {
        model::test::WriteBytes(File(), earlierBytes);
        for (const model::RegistryWrite& write : model::AllValues(Profiles(L"Earlier", 5)[1].settings)) {
            ASSERT_TRUE(model::CarryOut(write, kVid, kPid));
        }
    }

    static platform::UniqueKernelObject StartImporter(int failingCall) {
        wchar_t own[MAX_PATH]{};
        GetModuleFileNameW(nullptr, own, MAX_PATH);
        const std::wstring folder = std::wstring(own).substr(0, std::wstring(own).rfind(L'\\') + 1);
        test::StartedProcess started = test::StartProcess(L'"' + folder + L"stopping_importer.exe\" \"" + New() +
                                                          L"\" " + std::to_wstring(failingCall));
        if (!started.process) throw std::runtime_error("the importer cannot be started");
        return std::move(started.process);
    }

    static DWORD ExitCodeOf(const platform::UniqueKernelObject& process) {
        DWORD code = STILL_ACTIVE;
        if (WaitForSingleObject(process.Get(), kPatience) == WAIT_OBJECT_0) GetExitCodeProcess(process.Get(), &code);
        return code;
    }

    // The settings that the service reads from file and registry.
    static model::ProfileSettings InForce() {
        model::ProfileSet profiles;
        model::LoadProfileFile(File(), profiles);
        if (profiles.empty()) return {};
        const auto stored = model::StoredSettingsFrom(model::ReadModelValues(kVid, kPid), L"Arbitrary key");
        return model::CompletedFrom(stored, profiles[model::SelectedProfileOf(profiles)].settings);
    }

    void ExpectWhole(const std::string& when) const {
        model::ProfileSet profiles;
        ASSERT_EQ(model::LoadProfileFile(File(), profiles), 2U) << when;
        const bool isNew = profiles.front().name == L"New0";
        EXPECT_EQ(profiles, AllAlike(isNew ? Profiles(L"New", 7) : Profiles(L"Earlier", 5))) << when;
        EXPECT_EQ(InForce(), profiles[1].settings) << when;
        for (const std::wstring& kept : KeptFiles()) {
            EXPECT_EQ(model::test::ReadBytes(model::SettingsFolder() + kept), earlierBytes) << when;
        }
        EXPECT_TRUE(!isNew || !KeptFiles().empty()) << when;
    }

    // The profiles as they are read back.
    static model::ProfileSet AllAlike(model::ProfileSet profiles) {
        for (model::ProfileRecord& record : profiles) {
            record.vid = profiles.front().vid;
            record.pid = profiles.front().pid;
            record.selectedIndex = profiles.front().selectedIndex;
        }
        return profiles;
    }

    // For the next kill.
    void StartAgain() const {
        for (const std::wstring& kept : KeptFiles()) DeleteFileW((model::SettingsFolder() + kept).c_str());
        WriteEarlier();
    }

    std::string earlierBytes;
    std::string newBytes;
};

TEST_F(ImportKillTest, BeforeEachCallTheSettingsAreWhole) {
    bool hasSeenNew = false;
    int call = 1;
    for (; call < kMostCalls; ++call) {
        const DWORD code = ExitCodeOf(StartImporter(call));
        ASSERT_NO_FATAL_FAILURE(ExpectWhole("killed before call " + std::to_string(call)));
        model::ProfileSet profiles;
        model::LoadProfileFile(File(), profiles);
        hasSeenNew = hasSeenNew || profiles.front().name == L"New0";
        if (code == service::kDone) break;
        ASSERT_EQ(code, kKilled);
        StartAgain();
    }
    // One for each value that is removed and written, and some for the files.
    EXPECT_GT(call, 45);
    EXPECT_LT(call, kMostCalls);
    EXPECT_TRUE(hasSeenNew);
}

TEST_F(ImportKillTest, AnImportAfterAKilledOneCleansUp) {
    for (const int call : {3, 6, 9, 30}) {
        ASSERT_EQ(ExitCodeOf(StartImporter(call)), kKilled);
        ASSERT_EQ(ExitCodeOf(StartImporter(kMostCalls)), static_cast<DWORD>(service::kDone));
        for (const std::wstring& name : model::test::NamesIn(model::SettingsFolder())) {
            EXPECT_FALSE(name.starts_with(L"VIDfedc") && name.ends_with(L".saving")) << call;
        }
        StartAgain();
    }
}

TEST_F(ImportKillTest, AtRandomMomentsTheSettingsAreWhole) {
    std::mt19937 random(1);
    int killed = 0;
    for (int round = 0; round < 40; ++round) {
        const platform::UniqueKernelObject process = StartImporter(kMostCalls);
        WaitForSingleObject(process.Get(), random() % 200);
        TerminateProcess(process.Get(), kKilled);
        killed += ExitCodeOf(process) == kKilled ? 1 : 0;
        ASSERT_NO_FATAL_FAILURE(ExpectWhole("round " + std::to_string(round)));
        StartAgain();
    }
    EXPECT_GT(killed, 0);
}

}  // namespace
}  // namespace kvn::service_test

// The profile file when programs are killed at random moments while they save it, or save and open it at the same time.
#include <gtest/gtest.h>
#include <shlwapi.h>

#include <array>
#include <chrono>
#include <optional>
#include <random>
#include <string>

#include "model/profile_file.h"
#include "tests/model_windows/endless_saver.h"
#include "tests/model_windows/files.h"
#include "tests/support/sandboxed_user.h"
#include "tests/support/started_process.h"
#include "tests/support/waiting.h"

namespace kvn::model {
namespace {

constexpr LONG kSaves = 1000;
constexpr int kLeastKills = 100;
constexpr std::chrono::seconds kPatienceWithProcesses{20};

std::wstring FolderOfThisProgram() {
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    PathRemoveFileSpecW(path);
    return path;
}

// A process that saves endlessly; it is killed at the end at the latest.
class Saver {
public:
    Saver(const std::wstring& path, const std::wstring& countsName) {
        const std::wstring command = L"\"" + FolderOfThisProgram() + L"\\endless_saver.exe\" \"" + path + L"\" " +
                                     countsName + L' ' + std::to_wstring(GetCurrentProcessId());
        // Just after a kill, a start may fail for a moment.
        process = kvn::test::Await("the program that saves", [&] { return kvn::test::StartProcess(command).process; });
    }
    Saver(const Saver&) = delete;
    Saver& operator=(const Saver&) = delete;
    ~Saver() { Kill(); }

    bool IsRunning() const { return WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT; }

    void Kill() const {
        TerminateProcess(process.Get(), 9);
        WaitForSingleObject(process.Get(), INFINITE);
    }

private:
    platform::UniqueKernelObject process;
};

class SavingProgramsTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(SaveProfileFile(Path(), versions[0])); }

    std::wstring Path() const { return user.ApplicationData() + L"\\VID0abcPID00a1.xml"; }
    std::wstring CountsName() const { return L"KvnSaveCounts-" + std::to_wstring(GetCurrentProcessId()); }
    bool HasLeftover() const { return PathFileExistsW((Path() + L".saving").c_str()) != FALSE; }

    bool FileIsOneOfTheVersions() const {
        ProfileSet list;
        LoadProfileFile(Path(), list);
        return list == versions[0] || list == versions[1];
    }

    void AwaitSaves(LONG begun) const {
        if (!kvn::test::ComesTrue([&] { return counts->begun >= begun; }, kPatienceWithProcesses))
            throw kvn::test::NeverHappened("save " + std::to_string(begun));
    }

    // Saves that began but did not finish.
    LONG CutOff() const { return counts->begun - counts->saved - counts->refused; }

    const std::array<ProfileSet, 2> versions = test::AlternatingVersions();

private:
    kvn::test::SandboxedUser user;

protected:
    const test::SharedSaveCounts counts{CountsName()};
};

// Works for part of the time that a save takes.
void WorkFor(std::chrono::microseconds duration) {
    const auto end = std::chrono::steady_clock::now() + duration;
    while (std::chrono::steady_clock::now() < end) YieldProcessor();
}

TEST_F(SavingProgramsTest, KilledAtRandomMomentsLeaveOneVersionOrTheOtherWhole) {
    std::mt19937 random(20);
    int kills = 0;
    int leftovers = 0;
    for (; kills < kLeastKills || counts->begun < kSaves; ++kills) {
        {
            const Saver saver(Path(), CountsName());
            AwaitSaves(counts->begun + 1 + static_cast<LONG>(random() % 20));
            WorkFor(std::chrono::microseconds(random() % 4000));
        }
        ASSERT_TRUE(FileIsOneOfTheVersions()) << "after kill " << kills;
        if (HasLeftover()) ++leftovers;
        // Half of the leftovers stay, for the next saver to overwrite.
        if (kills % 2 == 0) FinishOrRemoveInterruptedSave(Path());
        ASSERT_TRUE(kills % 2 != 0 || !HasLeftover()) << "after kill " << kills;
    }
    EXPECT_GE(counts->begun, kSaves);
    EXPECT_EQ(counts->refused, 0);
    // Otherwise no kill came at a moment that matters.
    EXPECT_GT(CutOff(), 0);
    EXPECT_GT(leftovers, 0);
    RecordProperty("kills", kills);
    RecordProperty("saves", counts->begun);
    RecordProperty("cut_off", CutOff());
    RecordProperty("leftovers", leftovers);

    ASSERT_TRUE(SaveProfileFile(Path(), versions[1]));
    EXPECT_FALSE(HasLeftover());
}

TEST_F(SavingProgramsTest, AreNotDisturbedByPagesThatOpen) {
    const Saver saver(Path(), CountsName());
    AwaitSaves(1);
    int openings = 0;
    const auto deadline = std::chrono::steady_clock::now() + kPatienceWithProcesses;
    for (; counts->saved < 100 && counts->refused == 0; ++openings) {
        ASSERT_TRUE(saver.IsRunning());
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << counts->saved << " saves";
        FinishOrRemoveInterruptedSave(Path());
        if (openings % 50 == 0) {
            ASSERT_TRUE(FileIsOneOfTheVersions());
        }
    }
    saver.Kill();
    EXPECT_GE(counts->saved, 100);
    EXPECT_EQ(counts->refused, 0);
    EXPECT_GT(openings, 100);
}

TEST_F(SavingProgramsTest, TwoAtOnceLeaveOneVersionOrTheOtherWhole) {
    const Saver first(Path(), CountsName());
    const Saver second(Path(), CountsName());
    for (LONG saves = 20; saves <= 200; saves += 20) {
        AwaitSaves(saves);
        ASSERT_TRUE(FileIsOneOfTheVersions());
    }
    first.Kill();
    second.Kill();
    EXPECT_TRUE(FileIsOneOfTheVersions());
    EXPECT_LE(CutOff(), 2);
    EXPECT_GT(counts->saved, 100);
}

}  // namespace
}  // namespace kvn::model

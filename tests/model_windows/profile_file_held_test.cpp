// The profile file while another program has it open, or saves it.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/model_windows/genuine_function.h"
#include "tests/model_windows/profile_file_failure_fixture.h"
#include "tests/support/held_file.h"
#include "tests/support/replaced_import.h"

namespace kvn::model {
namespace {

using kvn::test::ReplacedImport;

constexpr DWORD kRetryMilliseconds = 20;

// Another program that holds the profile file. Each wait is counted; after a chosen number of waits it releases the
// file.
class HeldProfileFileTest : public ProfileFileFailureTest {
protected:
    void Hold(DWORD sharing, int waitToLetGo = 0, const std::wstring& suffix = L"") {
        held = kvn::test::HoldFile(Path() + suffix, sharing);
        letGo = waitToLetGo;
        waits = 0;
    }

    int Waits() const { return waits; }
    void LetGo() { held.reset(); }

private:
    void Wait(DWORD milliseconds) {
        // The run-time library sleeps too, for other times.
        if (milliseconds != kRetryMilliseconds) return genuineSleep(milliseconds);
        if (++waits == letGo) held.reset();
    }

    std::optional<platform::UniqueFile> held;
    int letGo = 0;
    int waits = 0;
    void(WINAPI* genuineSleep)(DWORD) = test::Genuine<void WINAPI(DWORD)>(L"kernel32", "Sleep");
    ReplacedImport<"Sleep", void(DWORD)> sleep{ThisProgram(), [this](DWORD milliseconds) { Wait(milliseconds); }};
};

// For every way in which the other program may share the file, except for deleting.
class SharedProfileFileTest : public HeldProfileFileTest, public testing::WithParamInterface<DWORD> {};

INSTANTIATE_TEST_SUITE_P(Sharing, SharedProfileFileTest,
                         testing::Values(DWORD{0}, DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}),
                         [](const auto& tested) { return std::to_string(tested.param); });

TEST_P(SharedProfileFileTest, IsSavedOnceItIsLetGo) {
    Hold(GetParam(), 3);
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(Waits(), 3);
    ProfileSet list;
    LoadProfileFile(Path(), list);
    EXPECT_EQ(list, OneProfile(L"new"));
}

TEST_P(SharedProfileFileTest, IsNotSavedWhenItStaysHeld) {
    Hold(GetParam());
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(Waits(), 9);
    LetGo();
    ExpectOldFileAndNoOther();
}

TEST_F(HeldProfileFileTest, IsLoadedOnceItIsLetGo) {
    Hold(0, 9);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_EQ(Waits(), 9);
}

TEST_F(HeldProfileFileTest, IsNotLoadedWhenItStaysHeld) {
    Hold(0);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 0U);
    EXPECT_EQ(Waits(), 9);
}

TEST_F(HeldProfileFileTest, IsLoadedAtOnceWhenOthersMayRead) {
    Hold(FILE_SHARE_READ);
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Path(), list), 1U);
    EXPECT_EQ(Waits(), 0);
}

TEST_F(HeldProfileFileTest, IsNotSetAside) {
    Hold(0);
    EXPECT_FALSE(SetAsideProfileFile(Path()));
    LetGo();
    ExpectOldFileAndNoOther();
}

TEST_F(HeldProfileFileTest, AMissingFileIsNotWaitedFor) {
    ProfileSet list;
    EXPECT_EQ(LoadProfileFile(Folder() + L"\\missing.xml", list), 0U);
    EXPECT_EQ(Waits(), 0);
}

TEST_F(HeldProfileFileTest, ASaveWaitsForAnotherSaveToEnd) {
    test::WriteBytes(Path() + L".saving", "another program writes here");
    Hold(0, 3, L".saving");
    EXPECT_TRUE(SaveProfileFile(Path(), OneProfile(L"new")));
    EXPECT_EQ(Waits(), 3);
    EXPECT_EQ(test::NamesIn(Folder()), std::vector<std::wstring>{L"VID0abcPID00a1.xml"});
}

TEST_F(HeldProfileFileTest, ASaveLeavesAnotherSaveThatDoesNotEndAlone) {
    test::WriteBytes(Path() + L".saving", "another program writes here");
    Hold(0, 0, L".saving");
    EXPECT_FALSE(SaveProfileFile(Path(), OneProfile(L"new")));
    FinishOrRemoveInterruptedSave(Path());
    EXPECT_EQ(Waits(), 9);
    LetGo();
    EXPECT_EQ(test::ReadBytes(Path() + L".saving"), "another program writes here");
    EXPECT_EQ(test::ReadBytes(Path()), OldBytes());
}

}  // namespace
}  // namespace kvn::model

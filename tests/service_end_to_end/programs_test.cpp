// Profiles by program: the profile for each program in front, and changes of files and keys.
#include <algorithm>

#include "tests/end_to_end/profile_text.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/service_world.h"
#include "tests/support/narrow_text.h"

namespace kvn::service_end_to_end {
namespace {

using end_to_end::ProfileText;
using end_to_end::WaitFor;

class ProgramsTest : public ServiceTest {
protected:
    // The back button types Q by the selected profile, A in alpha and B in beta.
    void SetUp() override {
        ServiceTest::SetUp();
        Store({.functions = {{kBack, Function::kKeys}}, .keys = {{kBack, L"Q"}}});
        WriteProfiles({Typing("Default", "Q"), Typing("Alpha", "A", {"alpha"}), Typing("Beta", "B", {"beta"})});
        StartService();
    }

    ProfileText Typing(const std::string& name, const std::string& key,
                       const std::vector<std::string>& programs = {}) const {
        ProfileText profile{.name = name, .elements = {{"button4", "37"}, {"button4_etcKey", key}}};
        for (const std::string& program : programs) {
            profile.programs.push_back({program, test::Narrow(Scratch()) + program + ".exe"});
        }
        return profile;
    }

    static void WriteProfiles(const std::vector<ProfileText>& profiles) {
        end_to_end::WriteFileBytes(ProfileFile(), end_to_end::ProfileFileText(profiles));
    }

    // Presses the back button until it types this key.
    void WaitForKey(Recorder& recorder, const std::string& key) { PressUntil(recorder, kBack, "sent up " + key); }

    void WaitForKeyInFront(Recorder& recorder, const std::string& key) {
        recorder.ComeToFront();
        WaitForKey(recorder, key);
    }
};

TEST_F(ProgramsTest, EachHasItsOwnProfileWhileItIsInFront) {
    Recorder& alpha = StartRecorder(L"alpha");
    WaitForKey(alpha, "A");
    Recorder& beta = StartRecorder(L"beta");
    WaitForKey(beta, "B");
    EXPECT_EQ(Status()["profile"], "Beta");
    EXPECT_EQ(Status()["why"], "program");
    WaitForKeyInFront(alpha, "A");
    Recorder& other = StartRecorder(L"other");
    WaitForKey(other, "Q");
    EXPECT_EQ(Status()["profile"], "Default");
    EXPECT_EQ(Status()["why"], "selected");
    WaitForKeyInFront(beta, "B");
}

TEST_F(ProgramsTest, ProgramIsFoundByFileNameAlone) {
    ProfileText profile = Typing("Everywhere", "E");
    profile.programs.push_back({"other", "OTHER.exe"});
    WriteProfiles({Typing("Default", "Q"), profile});
    Recorder& other = StartRecorder(L"other");
    WaitForKey(other, "E");
}

TEST_F(ProgramsTest, ProgramThatComesToTheFrontWhileAControlIsHeldEndsItsFunctionOnce) {
    WriteProfiles({Typing("Default", "Q"), Typing("Beta", "B", {"beta"})});
    Recorder& other = StartRecorder(L"other");
    Use({.functions = {{kBack, kCtrl}}}, other);
    hands.Press(kBack);
    Expect(other, {"sent down Ctrl"});
    Recorder& beta = StartRecorder(L"beta");
    Expect(beta, {"sent up Ctrl"});
    hands.Release(kBack);
    ExpectAll(beta, {});
    WaitForKey(beta, "B");
}

TEST_F(ProgramsTest, ForcedProfileCountsUntilAutomatic) {
    Recorder& alpha = StartRecorder(L"alpha");
    WaitForKey(alpha, "A");
    EXPECT_EQ(Ask({L"--profile", L"Beta"}), 0U);
    WaitForKey(alpha, "B");
    EXPECT_EQ(Status()["why"], "forced");
    EXPECT_EQ(Ask({L"--profile", L"Nobody"}), 1U);
    WaitForKey(alpha, "B");
    EXPECT_EQ(Ask({L"--profile", L"auto"}), 0U);
    WaitForKey(alpha, "A");
}

TEST_F(ProgramsTest, ChangedFileIsReadWithoutAnyMessage) {
    Recorder& alpha = StartRecorder(L"alpha");
    WaitForKey(alpha, "A");
    WriteProfiles({Typing("Default", "Q"), Typing("Alpha", "Z", {"alpha"})});
    WaitForKey(alpha, "Z");
}

TEST_F(ProgramsTest, ChangedRegistryIsReadWithoutAnyMessage) {
    Recorder& other = StartRecorder(L"other");
    WaitForKey(other, "Q");
    Store({.functions = {{kBack, Function::kKeys}}, .keys = {{kBack, L"W"}}});
    WaitForKey(other, "W");
}

TEST_F(ProgramsTest, NamesOfProfilesAreReadInTheUsersCodePage) {
    WriteProfiles({Typing("Default", "Q"), Typing("\x80uro \xE4\x92", "E")});
    WaitFor("the profile to be known", [&] { return Ask({L"--profile", L"\x20ACuro \xE4\x2019"}) == 0; });
    EXPECT_EQ(Status()["profile"], "\xE2\x82\xACuro \xC3\xA4\xE2\x80\x99");
}

TEST_F(ProgramsTest, DeletedFileTiesNoProgram) {
    Recorder& alpha = StartRecorder(L"alpha");
    WaitForKey(alpha, "A");
    DeleteFileW(ProfileFile().c_str());
    WaitForKey(alpha, "Q");
}

TEST_F(ProgramsTest, BrokenFileLeavesTheProfilesAsTheyWere) {
    Recorder& alpha = StartRecorder(L"alpha");
    WaitForKey(alpha, "A");
    Store({.functions = {{kBack, Function::kKeys}}, .keys = {{kBack, L"W"}}});
    end_to_end::WriteFileBytes(ProfileFile(), "<data><profile>");
    Recorder& other = StartRecorder(L"other");
    WaitForKey(other, "W");  // so both have been read
    WaitForKeyInFront(alpha, "A");
}

}  // namespace
}  // namespace kvn::service_end_to_end

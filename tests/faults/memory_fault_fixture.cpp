#include "tests/faults/memory_fault_fixture.h"

#include <filesystem>
#include <limits>

#include "tests/support/waiting.h"
#include "tests/support/written_profiles.h"

namespace kvn::test {

using platform::ServiceMessage;

void MemoryFaultTest::SetUp() {
    ASSERT_TRUE(memory.IsInPlace());
    PublishMouse(mouse);
    WriteProfilesOfEveryKind();
    WarmUp(memory, page);
    blocksAtRest = BlocksAtRest(memory, page);
}

void MemoryFaultTest::WriteProfilesOfEveryKind() const {
    const std::string first = ProfileText(
        kFirstProfile,
        {{"lbutton", "1"},
         {"rbutton", "37"},
         {"rbutton_etcKey", "Left Ctrl+V"},
         {"tbutton", "36"},
         {"scrolls", "7"},
         {"hspeed", "8"},
         {"hlotate", "9"},
         {"hcount", "3"},
         {"Application", "<name>a program with a long name</name><path>C:\\a path\\to\\a program.exe</path>"},
         {"Gesture", "<Key>U</Key><Function>3</Function><Memo>a memo that takes memory</Memo>"},
         {"Gesture", "<Key>RD</Key><Function>37</Function><Memo>b</Memo><EtcKey>Left Ctrl+Left Shift+V</EtcKey>"}});
    const std::string second =
        ProfileText("A profile with a long name", {{"lbutton", "37"},
                                                   {"lbutton_etcKey", "Left Alt+Left Shift+A"},
                                                   {"rbutton", "1"},
                                                   {"tbutton", "10"},
                                                   {"button4", "11"},
                                                   {"button5", "12"},
                                                   {"tiltleft", "13"},
                                                   {"tiltright", "14"},
                                                   {"scrolls", "2"},
                                                   {"hspeed", "3"},
                                                   {"hlotate", "4"},
                                                   {"hcount", "5"},
                                                   {"Gesture", "<Key>LLLL</Key><Function>5</Function><Memo>c</Memo>"}});
    WriteFileText(ProfilePath(), ProfileFileText({first, second}));
}

MemoryFaultTest::SavedState MemoryFaultTest::State() const {
    return {ReadFileText(ProfilePath()), StoredValues(mouse.Key())};
}

void MemoryFaultTest::ForgetProfiles() const {
    DeleteFileW(ProfilePath().c_str());
    ForgetValues();
}

void MemoryFaultTest::ApplyEverything() {
    for (const int profile : {1, 0}) {
        page.ChooseProfile(profile);
        ExpectSuccessfulApply();
    }
}

int MemoryFaultTest::SweepRefusals(const Rounds& rounds, const Sweep& sweep) {
    constexpr int kEver = std::numeric_limits<int>::max();
    int made = 0;
    bool wasRefused = true;
    for (int allocation = rounds.first; wasRefused; allocation += rounds.step) {
        SCOPED_TRACE(std::to_string(allocation) + (rounds.once ? " alone was refused" : " and all later were refused"));
        sweep.prepare();
        memory.Refuse(allocation, rounds.once ? allocation : kEver);
        sweep.operation();
        wasRefused = memory.StopRefusing();
        ExpectNoDamage();
        sweep.check();
        ++made;
        if (HasFailure() || (sweep.isEnough && sweep.isEnough())) break;  // the first failure is enough
    }
    return made;
}

void MemoryFaultTest::SweepRefusals(const Sweep& sweep) {
    for (const bool once : {true, false}) {
        if (!HasFailure()) SweepRefusals({once}, sweep);
    }
}

void MemoryFaultTest::ExpectNoDamage() const {
    EXPECT_EQ(AccessViolations::Seen(), 0);
    EXPECT_EQ(BarePage::Escapes(), 0);
    EXPECT_EQ(page.StuckDialogs(), 0);
}

void MemoryFaultTest::ExpectSuccessfulApply() {
    page.ForgetMessages();
    const std::size_t before = service.CountOf(ServiceMessage::SettingsChanged);
    EXPECT_TRUE(page.Apply());
    EXPECT_TRUE(page.Messages().empty());
    EXPECT_EQ(service.CountOf(ServiceMessage::SettingsChanged), before + 1);
    ExpectNoUnfinishedFile();
}

void MemoryFaultTest::CloseAndExpectNoLeak() {
    page.Close();
    EXPECT_EQ(module.CanUnloadNow(), S_OK);
    EXPECT_EQ(BlocksAtRest(memory, page), blocksAtRest);
}

void MemoryFaultTest::ExpectNoUnfinishedFile() const {
    if (!FileExists(user.SettingsFolder())) return;
    for (const auto& file : std::filesystem::directory_iterator(user.SettingsFolder())) {
        EXPECT_EQ(file.path().wstring(), ProfilePath());
    }
}

}  // namespace kvn::test

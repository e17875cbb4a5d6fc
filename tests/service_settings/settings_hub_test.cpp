#include "service/settings/settings_hub.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>

#include "tests/service_settings/hub_fixture.h"

namespace kvn::service {
namespace {

using kvn::test::ComesTrue;
using kvn::test::ProfileText;

class SettingsHubTest : public HubFixture {};

TEST_F(SettingsHubTest, WithoutAMouseReportsNothing) {
    StartHub();
    Hub().Reread();
    Hub().ForceAutomatic();
    EXPECT_FALSE(Hub().Force(L"Default"));
    EndHub();
    EXPECT_TRUE(Heard().empty());
}

TEST_F(SettingsHubTest, WithoutAMouseSleepsWhileNothingHappens) {
    StartHub();
    Hub().ForceAutomatic();
    EXPECT_TRUE(ComesTrue([this] { return activity.isSomeoneAsleep.load(); }));
}

TEST_F(SettingsHubTest, ReportsTheProfileOfTheMouse) {
    WriteFile({ProfileText("Default"), ProfileText("Other")}, 1);
    SetNumber(L"BindKeyLeft", 10);
    StartReadHub();
    const ProfileInForce first = Heard().at(0);
    EXPECT_EQ(first.name, L"Other");
    EXPECT_EQ(first.why, Why::Selected);
    EXPECT_EQ(first.settings.functions[model::ButtonSlot::Left], 10);
    EXPECT_EQ(first.settings.controlCount, 7);
    EXPECT_EQ(Hub().InForce().settings, first.settings);
    EXPECT_EQ(Hub().ProfileNames(), (std::vector<std::wstring>{L"Default", L"Other"}));
    EXPECT_EQ(Hub().SwitchCount(), 0U);
}

TEST_F(SettingsHubTest, ReportsEachChangeOnce) {
    StartReadHub();
    Hub().Reread();
    Hub().UseMouse(Mouse());
    SetNumber(L"BindKeyLeft", 10);
    Hub().Reread();
    ASSERT_TRUE(LeftFunctionBecomes(10));
    EndHub();
    EXPECT_EQ(Heard().size(), 2U);
}

TEST_F(SettingsHubTest, AnotherSettingOfTheSameProfileIsNoSwitch) {
    StartReadHub();
    SetNumber(L"BindKeyLeft", 10);
    ASSERT_TRUE(LeftFunctionBecomes(10));
    EXPECT_EQ(Hub().SwitchCount(), 0U);
    EXPECT_EQ(Heard().back().settings.profile, Heard().front().settings.profile);
}

TEST_F(SettingsHubTest, ForcesAProfileUntilAutomaticIsChosen) {
    WriteFile({ProfileText("Default"), ProfileText("Other", {{"lbutton", "6"}})});
    SetNumber(L"BindKeyLeft", 10);
    StartReadHub();
    EXPECT_EQ(Hub().ForcedProfile(), L"");
    ASSERT_TRUE(Hub().Force(L"Other"));
    ASSERT_TRUE(BecomesInForce(L"Other"));
    EXPECT_EQ(LeftFunction(), 6);
    EXPECT_EQ(Hub().InForce().why, Why::Forced);
    EXPECT_EQ(Hub().ForcedProfile(), L"Other");
    EXPECT_EQ(Hub().SwitchCount(), 1U);
    ASSERT_TRUE(Hub().Force(L"Default"));
    ASSERT_TRUE(BecomesInForce(L"Default"));
    EXPECT_EQ(LeftFunction(), 10);
    Hub().ForceAutomatic();
    EXPECT_TRUE(ComesTrue([this] { return Hub().InForce().why == Why::Selected; }));
    EXPECT_EQ(Hub().ForcedProfile(), L"");
    EXPECT_EQ(Hub().SwitchCount(), 2U);
}

TEST_F(SettingsHubTest, RefusesToForceAnUnknownProfile) {
    WriteFile({ProfileText("Default"), ProfileText("")});
    StartReadHub();
    EXPECT_FALSE(Hub().Force(L"Other"));
    EXPECT_FALSE(Hub().Force(L"default"));
    EXPECT_FALSE(Hub().Force(L""));
}

TEST_F(SettingsHubTest, AForcedProfileThatIsGoneCountsAgainWhenItIsBack) {
    const std::vector both{ProfileText("Default"), ProfileText("Other")};
    WriteFile(both);
    StartReadHub();
    ASSERT_TRUE(Hub().Force(L"Other"));
    ASSERT_TRUE(BecomesInForce(L"Other"));
    const std::uint32_t number = Hub().InForce().settings.profile;
    WriteFile({ProfileText("Default")});
    ASSERT_TRUE(BecomesInForce(L"Default"));
    EXPECT_EQ(Hub().ForcedProfile(), L"");
    WriteFile(both);
    ASSERT_TRUE(BecomesInForce(L"Other"));
    EXPECT_EQ(Hub().InForce().settings.profile, number);
}

TEST_F(SettingsHubTest, ANameKeepsItsNumberAmongOthers) {
    WriteFile({ProfileText("Default"), ProfileText("Other")}, 1);
    StartReadHub();
    const std::uint32_t number = Hub().InForce().settings.profile;
    WriteFile({ProfileText("Default"), ProfileText("New"), ProfileText("Other")}, 1);
    ASSERT_TRUE(BecomesInForce(L"New"));
    EXPECT_NE(Hub().InForce().settings.profile, number);
    WriteFile({ProfileText("Other"), ProfileText("New")}, 0);
    ASSERT_TRUE(BecomesInForce(L"Other"));
    EXPECT_EQ(Hub().InForce().settings.profile, number);
}

TEST_F(SettingsHubTest, AnotherMouseHasItsOwnSettings) {
    SetNumber(L"BindKeyLeft", 10);
    SetNumber(L"BindKeyLeft", 11, L"Software\\KORVEN\\MouseUtility\\VID0001PID0002");
    StartReadHub();
    ASSERT_TRUE(LeftFunctionBecomes(10));
    model::DeviceRecord other = Mouse();
    other.vid = 1;
    other.pid = 2;
    other.hasTilt = 0;
    other.buttonCount = 3;
    Hub().UseMouse(other);
    ASSERT_TRUE(LeftFunctionBecomes(11));
    EXPECT_EQ(Hub().InForce().settings.controlCount, 3);
    EXPECT_NE(Heard().front().settings.profile, Heard().back().settings.profile);
    SetNumber(L"BindKeyLeft", 12, L"Software\\KORVEN\\MouseUtility\\VID0001PID0002");
    EXPECT_TRUE(LeftFunctionBecomes(12));
}

TEST_F(SettingsHubTest, EndsAtOnceWhateverItDoes) {
    for (int time = 0; time < 20; ++time) {
        StartHub();
        Hub().UseMouse(Mouse());
        if (time % 2 == 0) Hub().Reread();
        EndHub();
        EXPECT_FALSE(activity.isSomeoneAsleep);
    }
}

TEST_F(SettingsHubTest, AReportThatFailsIsMadeAgain) {
    std::atomic<int> calls = 0;
    const auto failAtFirst = [&](const ProfileInForce&) {
        if (calls++ == 0) throw std::bad_alloc();
    };
    {
        SettingsHub failing(activity, profileNumbers,
                            {.onProfile = failAtFirst, .onWindowInFront = {}, .onProblem = {}});
        ASSERT_TRUE(failing.Start());
        failing.UseMouse(Mouse());
        EXPECT_TRUE(ComesTrue([&] { return calls >= 2 && failing.HasTakenMouse(); }));
    }
    EXPECT_EQ(calls, 2);
}

TEST_F(SettingsHubTest, SleepsUntilTheMouseIsUsed) {
    StartReadHub();
    const auto isAsleep = [this] { return activity.isSomeoneAsleep.load(); };
    ASSERT_TRUE(ComesTrue(isAsleep));
    MoveMouse();
    EXPECT_TRUE(ComesTrue(isAsleep));
    EXPECT_GE(GetTickCount() - activity.lastEvent, 1000U);
}

}  // namespace
}  // namespace kvn::service

// Every function on every control: the input that reaches the program in front, and the programs that are opened.
#include <algorithm>
#include <chrono>
#include <thread>

#include "tests/end_to_end/stored_state.h"
#include "tests/service_end_to_end/expectations.h"
#include "tests/service_end_to_end/service_world.h"
#include "tests/support/narrow_text.h"
#include "tests/support/waiting.h"

namespace kvn::service_end_to_end {
namespace {

using Clock = std::chrono::steady_clock;

// Tilt reports with shorter gaps are one push.
constexpr std::chrono::milliseconds kPushEnds{330};

std::string Described(model::FunctionCode code, ButtonSlot control) {
    return "function " + std::to_string(code) + " on control " + std::to_string(static_cast<int>(control));
}

// Repeats of keys do not matter here.
Lines WithoutRepeats(Lines lines) {
    std::erase_if(lines, [](const std::string& line) { return line.find(" again") != std::string::npos; });
    return lines;
}

Lines WithoutSameAgain(Lines lines) {
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

class FunctionsTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        StartService();
        recorder = &StartRecorder();
    }

    // Tests all functions on these controls in turn. `clicker` has the left click meanwhile, so that the left button
    // may have another function.
    void TryAllOn(const std::vector<ButtonSlot>& controls, ButtonSlot clicker, ButtonSlot witness) {
        for (std::size_t round = 0; round < AllFunctions().size() && !HasFatalFailure(); ++round) {
            TryRound(round, controls, clicker, witness);
        }
    }

private:
    void TryRound(std::size_t round, const std::vector<ButtonSlot>& controls, ButtonSlot clicker, ButtonSlot witness) {
        Choice choice{.functions = {{clicker, kLeftClick}}};
        for (std::size_t index = 0; index < controls.size(); ++index) {
            choice.functions[controls[index]] = AllFunctions()[(round + 7 * index) % AllFunctions().size()];
            choice.keys[controls[index]] = kChosenKeys;
        }
        SCOPED_TRACE("round " + std::to_string(round));
        Use(choice, *recorder, witness);
        for (const ButtonSlot control : controls) Try(choice.functions[control], control);
    }

    void Try(model::FunctionCode code, ButtonSlot control) {
        SCOPED_TRACE(Described(code, control));
        const Expectation expected = ExpectationOf(code, control);
        const bool draws = code == kGesture && !IsTilt(control);
        const std::size_t openedBefore = Opened().size();
        if (IsTilt(control)) std::this_thread::sleep_until(lastPush[control] + kPushEnds);

        hands.Press(control);
        const Lines atPress = Seen(recorder->Arrived(expected.atPress.size()), expected);
        EXPECT_EQ(atPress, expected.atPress) << "at the press";
        if (draws) WaitForTrail();
        hands.Release(control);
        Lines atRelease = recorder->Arrived(expected.atRelease.size());
        if (!expected.opened.empty()) ExpectOpened(expected, openedBefore);
        if (draws) WaitUntilTrailHasGone(*recorder);
        const Lines later = recorder->ArrivedUntilNow();
        atRelease.insert(atRelease.end(), later.begin(), later.end());
        if (expected.maySendMore) std::erase(atRelease, expected.atPress.front());
        EXPECT_EQ(Seen(atRelease, expected), expected.atRelease) << "at the release";
        lastPush[control] = Clock::now();
    }

    static Lines Seen(Lines lines, const Expectation& expected) {
        lines = WithoutRepeats(std::move(lines));
        return expected.maySendMore ? WithoutSameAgain(std::move(lines)) : lines;
    }

    void ExpectOpened(const Expectation& expected, std::size_t openedBefore) const {
        EXPECT_TRUE(test::ComesTrue([&] { return Opened().size() > openedBefore; })) << "nothing was opened";
        const Lines opened = Opened();
        ASSERT_EQ(opened.size(), openedBefore + 1);
        EXPECT_TRUE(opened.back().starts_with(expected.opened + ' ')) << opened.back();
        EXPECT_NE(opened.back().find(expected.argument), std::string::npos) << opened.back();
    }

    const end_to_end::TemporaryText browser{HKEY_LOCAL_MACHINE, L"Software\\Classes\\http\\shell\\open\\command", L"",
                                            L"\"C:\\windows\\system32\\browser.exe\" \"%1\""};
    Recorder* recorder = nullptr;
    std::map<ButtonSlot, Clock::time_point> lastPush;
};

TEST_F(FunctionsTest, AllWorkOnTheOuterControls) {
    TryAllOn({kLeft, kRight, kBack, kTiltLeft, kTiltRight}, kForward, kWheel);
}

TEST_F(FunctionsTest, AllWorkOnWheelButtonAndForwardButton) {
    TryAllOn({kWheel, kForward}, kTiltRight, kBack);
}

}  // namespace
}  // namespace kvn::service_end_to_end

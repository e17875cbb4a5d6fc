// Controls that are held: what is pressed is released, whatever changes meanwhile; repeats; several at once; the
// keyboard.
#include <chrono>
#include <thread>

#include "platform/unique_resource.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/service_end_to_end/service_world.h"

namespace kvn::service_end_to_end {
namespace {

using Clock = std::chrono::steady_clock;
using end_to_end::WaitFor;

bool IsDown(int key) {
    return (GetAsyncKeyState(key) & 0x8000) != 0;
}

// The keyboard's shortest delay and highest rate, for the time of a test.
class QuickKeyboard {
public:
    QuickKeyboard() {
        SystemParametersInfoW(SPI_GETKEYBOARDDELAY, 0, &delay, 0);
        SystemParametersInfoW(SPI_GETKEYBOARDSPEED, 0, &speed, 0);
        Set(0, 31);
    }
    ~QuickKeyboard() { Set(static_cast<UINT>(delay), speed); }
    QuickKeyboard(const QuickKeyboard&) = delete;
    QuickKeyboard& operator=(const QuickKeyboard&) = delete;

private:
    static void Set(UINT newDelay, UINT newSpeed) {
        SystemParametersInfoW(SPI_SETKEYBOARDDELAY, newDelay, nullptr, 0);
        SystemParametersInfoW(SPI_SETKEYBOARDSPEED, newSpeed, nullptr, 0);
    }

    int delay = 1;
    DWORD speed = 31;
};

// Stops a process in the middle of whatever it does, and lets it go on.
class StoppedProcess {
public:
    explicit StoppedProcess(DWORD id) : process(OpenProcess(PROCESS_SUSPEND_RESUME, FALSE, id)) {
        EXPECT_EQ(Call("NtSuspendProcess"), 0);
    }
    ~StoppedProcess() { EXPECT_EQ(Call("NtResumeProcess"), 0); }
    StoppedProcess(const StoppedProcess&) = delete;
    StoppedProcess& operator=(const StoppedProcess&) = delete;

private:
    LONG Call(const char* name) const {
        using Function = LONG WINAPI(HANDLE);
        const FARPROC found = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name);
        return found == nullptr ? -1 : reinterpret_cast<Function*>(reinterpret_cast<void*>(found))(process.Get());
    }

    platform::UniqueKernelObject process;
};

class HoldingTest : public ServiceTest {
protected:
    void SetUp() override {
        ServiceTest::SetUp();
        StartService();
        recorder = &StartRecorder();
    }

    void UseFunctions(const std::map<ButtonSlot, model::FunctionCode>& functions,
                      const std::map<ButtonSlot, std::wstring>& keys = {}) {
        Use({.functions = functions, .keys = keys}, *recorder);
    }
    void Expect(const Lines& lines) { ServiceTest::Expect(*recorder, lines); }
    void ExpectAll(const Lines& lines) { ServiceTest::ExpectAll(*recorder, lines); }

    Recorder* recorder = nullptr;
};

TEST_F(HoldingTest, KeyRepeatsWithTheKeyboardsDelayUntilTheRelease) {
    const QuickKeyboard keyboard;
    UseFunctions({{kBack, Function::kEnter}});
    const auto begin = Clock::now();
    hands.Press(kBack);
    Expect({"sent down Enter"});
    Lines repeats = recorder->Arrived(3);
    // The shortest delay is a quarter of a second, the highest rate some thirty a second.
    EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(250 + 2 * 25));
    hands.Release(kBack);
    for (const std::string& line : recorder->ArrivedUpTo("sent up Enter")) repeats.push_back(line);
    EXPECT_EQ(recorder->ArrivedUntilNow(), Lines());
    ASSERT_FALSE(repeats.empty());
    EXPECT_EQ(repeats.back(), "sent up Enter");
    repeats.pop_back();
    EXPECT_EQ(repeats, Lines(repeats.size(), "sent down Enter again"));
}

TEST_F(HoldingTest, OnlyTheLastKeyThatIsNoModifierRepeats) {
    const QuickKeyboard keyboard;
    UseFunctions({{kBack, Function::kKeys}}, {{kBack, L"Left Shift+A+B"}});
    hands.Press(kBack);
    Expect({"sent down Shift", "sent down A [Shift]", "sent down B [Shift]"});
    const Lines repeats = recorder->Arrived(3);
    EXPECT_EQ(repeats, Lines(repeats.size(), "sent down B [Shift] again"));
    hands.Release(kBack);
    Lines end = recorder->ArrivedUpTo("sent up Shift");
    std::erase(end, "sent down B [Shift] again");
    EXPECT_EQ(end, (Lines{"sent up B [Shift]", "sent up A [Shift]", "sent up Shift"}));
}

TEST_F(HoldingTest, HorizontalScrollingGoesOnTenTimesASecond) {
    Use({.functions = {{kBack, kScrollRight}}, .horizontalSpeed = 6}, *recorder);
    const auto begin = Clock::now();
    hands.Press(kBack);
    const Lines steps = recorder->Arrived(5);
    const auto duration = Clock::now() - begin;
    hands.Release(kBack);
    EXPECT_EQ(steps, Lines(steps.size(), "sent hwheel 180"));
    EXPECT_GE(duration, std::chrono::milliseconds(350));
    recorder->Forget();
    ExpectAll({});
}

TEST_F(HoldingTest, TiltsOwnReportsAreMultipliedBySpeed) {
    constexpr int kNatural = 4;
    for (int speed = 1; speed <= 8; ++speed) {
        SCOPED_TRACE(speed);
        Use({.horizontalSpeed = speed}, *recorder);
        hands.Press(kTiltLeft);
        hands.Press(kTiltLeft);
        hands.Press(kTiltRight);
        const std::string origin = speed == kNatural ? "real hwheel " : "sent hwheel ";
        const std::string amount = std::to_string(30 * speed);
        ExpectAll({origin + '-' + amount, origin + '-' + amount, origin + amount});
    }
}

TEST_F(HoldingTest, OneThatActsOnceActsOnceInAPushOfTheTilt) {
    UseFunctions({{kTiltLeft, kCopy}, {kTiltRight, Function::kTab}});
    for (int report = 0; report < 4; ++report) hands.Press(kTiltLeft);
    ExpectAll({"sent down Ctrl", "sent down C [Ctrl]", "sent up C [Ctrl]", "sent up Ctrl"});
    for (int report = 0; report < 2; ++report) hands.Press(kTiltRight);
    ExpectAll({"sent down Tab", "sent up Tab", "sent down Tab", "sent up Tab"});
    std::this_thread::sleep_for(std::chrono::milliseconds(330));  // the push ends by time alone
    hands.Press(kTiltLeft);
    ExpectAll({"sent down Ctrl", "sent down C [Ctrl]", "sent up C [Ctrl]", "sent up Ctrl"});
}

TEST_F(HoldingTest, ModifierOnAButtonWorksWithWheelClickAndKeyboard) {
    UseFunctions({{kBack, kCtrl}, {kForward, Function::kShift}});
    hands.Press(kBack);
    Expect({"sent down Ctrl"});
    hands.TurnWheelUp();
    Expect({"real turn 120 [Ctrl]"});
    hands.Click(kLeft);
    Expect({"real left down [Ctrl]", "real left up [Ctrl]"});
    hands.PressKey("a");
    Expect({"real down A [Ctrl]", "real up A [Ctrl]"});
    hands.Release(kBack);
    hands.Press(kForward);
    Expect({"sent up Ctrl", "sent down Shift"});
    hands.Click(kRight);
    hands.Release(kForward);
    ExpectAll({"real right down [Shift]", "real right up [Shift]", "sent up Shift"});
}

TEST_F(HoldingTest, TwoControlsThatHoldOneKeyCount) {
    UseFunctions({{kBack, kCtrl}, {kForward, kCtrl}, {kRight, kCtrl}});
    hands.Press(kBack);
    Expect({"sent down Ctrl"});
    hands.Press(kForward);
    hands.Press(kRight);
    hands.Release(kBack);
    hands.Release(kRight);
    ExpectAll({});
    hands.Release(kForward);
    ExpectAll({"sent up Ctrl"});
}

TEST_F(HoldingTest, TwoControlsThatHoldOneButtonCount) {
    UseFunctions({{kBack, kRightClick}, {kForward, kRightClick}});
    hands.Press(kBack);
    hands.Press(kForward);
    hands.Release(kBack);
    ExpectAll({"sent right down"});
    hands.Release(kForward);
    ExpectAll({"sent right up"});
}

TEST_F(HoldingTest, ButtonThatTheUserHoldsTooGoesUpWithTheLast) {
    UseFunctions({{kBack, kLeftClick}, {kForward, kDoubleClick}});
    hands.Press(kLeft);
    Expect({"real left down"});
    hands.Click(kBack);
    hands.Click(kForward);
    hands.Press(kBack);
    ExpectAll({});
    hands.Release(kLeft);
    hands.Release(kBack);
    ExpectAll({"real left up"});

    hands.Press(kBack);
    Expect({"sent left down"});
    hands.Press(kLeft);
    hands.Release(kBack);
    ExpectAll({"real left down"});
    hands.Release(kLeft);
    ExpectAll({"real left up"});
    hands.Click(kBack);
    ExpectAll({"sent left down", "sent left up"});
}

TEST_F(HoldingTest, ShiftOnOneButtonAndTabOnAnotherAreShiftTab) {
    UseFunctions({{kBack, Function::kShift}, {kForward, Function::kTab}});
    hands.Press(kBack);
    hands.Click(kForward);
    hands.Release(kBack);
    ExpectAll({"sent down Shift", "sent down Tab [Shift]", "sent up Tab [Shift]", "sent up Shift"});
}

TEST_F(HoldingTest, KeyWithoutModifierJoinsTheKeyboardsOne) {
    UseFunctions({{kBack, Function::kTab}});
    hands.HoldKey("Shift_L");
    hands.Click(kBack);
    Expect({"real down Shift", "sent down Tab [Shift]", "sent up Tab [Shift]"});
    hands.LetGoOfKey("Shift_L");
    ExpectAll({"real up Shift"});
}

TEST_F(HoldingTest, ChordArrivesAsNamedWhileShiftIsHeldOnTheKeyboard) {
    UseFunctions({{kBack, kCopy}});
    hands.HoldKey("Shift_L");
    Expect({"real down Shift"});
    hands.Click(kBack);
    const Lines arrived = recorder->ArrivedUpTo("sent up C [Ctrl]").empty() ? recorder->ArrivedUntilNow() : Lines{};
    EXPECT_EQ(arrived, Lines()) << "the chord did not arrive as it is named";
    WaitFor("Shift to be down again", [] { return IsDown(VK_SHIFT); });
    recorder->Forget();
    hands.PressKey("a");
    Expect({"real down A [Shift]", "real up A [Shift]"});
    hands.LetGoOfKey("Shift_L");
    Expect({"real up Shift"});
    EXPECT_FALSE(IsDown(VK_SHIFT));
    EXPECT_FALSE(IsDown(VK_CONTROL));
}

TEST_F(HoldingTest, ModifierThatTheUserHoldsIsNeitherPressedNorReleased) {
    UseFunctions({{kBack, kCopy}});
    hands.HoldKey("Control_L");
    Expect({"real down Ctrl"});
    hands.Click(kBack);
    ExpectAll({"sent down C [Ctrl]", "sent up C [Ctrl]"});
    hands.LetGoOfKey("Control_L");
    ExpectAll({"real up Ctrl"});
}

TEST_F(HoldingTest, OffKeepsPressAndRelease) {
    UseFunctions({{kBack, kOff}, {kRight, kOff}, {kTiltLeft, kOff}});
    hands.Click(kBack);
    hands.Click(kRight);
    hands.Press(kTiltLeft);
    ExpectAll({});
}

TEST_F(HoldingTest, LeftButtonClicksWhenNoControlHasTheLeftClick) {
    UseFunctions({{kLeft, kCopy}});
    hands.Click(kLeft);
    ExpectAll({"real left down", "real left up"});
}

TEST_F(HoldingTest, FunctionEndsAtTheChangeWhenTheControlGetsAnotherOne) {
    UseFunctions({{kBack, kCtrl}});
    hands.Press(kBack);
    Expect({"sent down Ctrl"});
    Store({.functions = {{kBack, kCopy}}});
    Announce();
    Expect({"sent up Ctrl"});
    hands.Release(kBack);
    ExpectAll({});
}

TEST_F(HoldingTest, FunctionThatStaysEndsAtTheRelease) {
    UseFunctions({{kBack, kCtrl}});
    hands.Press(kBack);
    Expect({"sent down Ctrl"});
    Store({.functions = {{kBack, kCtrl}, {kForward, kOff}}});
    Announce();
    WaitFor("the new settings", [&] {
        hands.Click(kForward);
        return recorder->ArrivedUntilNow().empty();
    });
    EXPECT_TRUE(IsDown(VK_CONTROL));
    hands.Release(kBack);
    ExpectAll({"sent up Ctrl"});
}

TEST_F(HoldingTest, ReleaseOfAPassedPressPassesAfterAChange) {
    UseFunctions({});
    hands.Press(kBack);
    Expect({"real back down"});
    UseFunctions({{kBack, kCopy}});
    hands.Release(kBack);
    ExpectAll({"real back up"});
}

TEST_F(HoldingTest, ReleaseOfAKeptPressIsKeptAfterAChange) {
    UseFunctions({{kBack, kOff}});
    hands.Press(kBack);
    UseFunctions({});
    hands.Release(kBack);
    ExpectAll({});
    hands.Click(kBack);
    ExpectAll({"real back down", "real back up"});
}

TEST_F(HoldingTest, PauseReleasesWhatIsHeldAndLeavesEverythingNatural) {
    UseFunctions({{kBack, kCtrl}});
    hands.Press(kBack);
    Expect({"sent down Ctrl"});
    EXPECT_EQ(Ask({L"--pause"}), 0U);
    Expect({"sent up Ctrl"});
    EXPECT_EQ(Status()["paused"], "yes");
    hands.Release(kBack);
    hands.Click(kBack);
    ExpectAll({"real back down", "real back up"});

    EXPECT_EQ(Ask({L"--resume"}), 0U);
    WaitFor("the end of the pause", [&] { return Status()["paused"] == "no"; });
    hands.Click(kBack);
    ExpectAll({"sent down Ctrl", "sent up Ctrl"});
}

TEST_F(HoldingTest, LockReleasesWhatIsHeldAndTheReleaseIsKept) {
    UseFunctions({{kBack, kCtrl}});
    hands.Press(kBack);
    Expect({"sent down Ctrl"});
    SendMessageW(ServiceWindow(), WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK, 0);
    Expect({"sent up Ctrl"});
    SendMessageW(ServiceWindow(), WM_WTSSESSION_CHANGE, WTS_SESSION_UNLOCK, 0);
    hands.Release(kBack);
    ExpectAll({});
    hands.Click(kBack);
    ExpectAll({"sent down Ctrl", "sent up Ctrl"});
}

TEST_F(HoldingTest, ExitReleasesWhatIsHeld) {
    UseFunctions({{kBack, kCtrl}, {kRight, kMiddleClick}});
    hands.Press(kBack);
    hands.Press(kRight);
    Expect({"sent down Ctrl", "sent wheel down [Ctrl]"});
    EXPECT_EQ(Ask({L"--quit"}), 0U);
    WaitFor("the end of the service", [] { return ServiceWindow() == nullptr; });
    WaitFor("Ctrl to be up", [] { return !IsDown(VK_CONTROL) && !IsDown(VK_MBUTTON); });
    static_cast<void>(recorder->ArrivedUntilNow());
    hands.Release(kBack);
    hands.Release(kRight);
    static_cast<void>(recorder->ArrivedUntilNow());
    hands.Click(kBack);
    ExpectAll({"real back down", "real back up"});
}

TEST_F(HoldingTest, ReleaseThatTheServiceMissedEndsItsFunctionAndIsNotKeptLater) {
    UseFunctions({{kBack, kCtrl}});
    hands.Press(kBack);
    Expect({"sent down Ctrl"});
    {
        const StoppedProcess stopped(ServiceProcess());
        hands.Release(kBack);
        Expect({"real back up [Ctrl]"});  // Windows waits for the hook no longer
    }
    Expect({"sent up Ctrl"});
    {
        const StoppedProcess stopped(ServiceProcess());
        hands.Press(kBack);
        Expect({"real back down"});
    }
    WaitFor("the service to answer", [&] { return Status()["hook"] == "alive"; });
    hands.Release(kBack);
    ExpectAll({"real back up"});
}

TEST_F(HoldingTest, InputOfProgramsPasses) {
    UseFunctions({{kBack, kOff}});
    INPUT input{};
    input.type = INPUT_MOUSE;
    for (const DWORD flags : {MOUSEEVENTF_XDOWN, MOUSEEVENTF_XUP}) {
        input.mi.dwFlags = flags;
        input.mi.mouseData = XBUTTON1;
        SendInput(1, &input, sizeof input);
    }
    ExpectAll({"sent back down", "sent back up"});
}

}  // namespace
}  // namespace kvn::service_end_to_end

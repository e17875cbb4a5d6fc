#include "service/input/hook_loop.h"

#include "tests/service_input/allocation_count.h"
#include "tests/service_input/performer_fixture.h"

namespace kvn::test {
namespace {

using model::ButtonSlot;
using service::EngineSettings;

// Gives the loop the reports that Windows would give a hook about the user's own mouse.
class HookLoopTest : public PerformerTest {
protected:
    bool Keeps(WPARAM message, WORD data = 0, DWORD flags = 0) {
        MSLLHOOKSTRUCT details{};
        details.mouseData = static_cast<DWORD>(data) << 16U;
        details.flags = flags;
        details.time = ++time;
        return loop.Keeps(message, details);
    }
    void Choose(ButtonSlot control, model::FunctionCode function) {
        settings.controlCount = 7;
        settings.functions[control] = function;
        loop.Send(settings);
    }

    // Control, function and what is to be said of it, for each press since the last time.
    std::string Seen() {
        std::string all;
        for (service::SeenPress press; loop.presses.Take(press);) {
            all += std::to_string(static_cast<int>(press.control)) + ':' + std::to_string(press.function) + ' ';
            if (press.isPaused) all += "paused ";
            const int cause = static_cast<int>(press.cause);
            if (cause != 0) all += "because of " + std::to_string(cause) + ' ';
        }
        return all;
    }

    service::MouseActivity activity;
    service::HookLoop loop{*performer, activity};
    EngineSettings settings;
    std::uint32_t time = 1000;
};

TEST_F(HookLoopTest, PressAndReleaseOfAFunctionAreKeptAndTheFunctionIsCarriedOut) {
    Choose(ButtonSlot::Button4, kShift);
    EXPECT_TRUE(Keeps(WM_XBUTTONDOWN, XBUTTON1));
    EXPECT_EQ(recorder.Await("+Shift"), "+Shift");
    EXPECT_TRUE(Keeps(WM_XBUTTONUP, XBUTTON1));
    EXPECT_EQ(recorder.Await("+Shift -Shift"), "+Shift -Shift");
}

TEST_F(HookLoopTest, EveryButtonIsToldFromTheOthers) {
    struct Row {
        ButtonSlot control;
        WPARAM down, up;
        WORD data;
    };
    for (const Row& row : {Row{ButtonSlot::Right, WM_RBUTTONDOWN, WM_RBUTTONUP, 0},
                           Row{ButtonSlot::Center, WM_MBUTTONDOWN, WM_MBUTTONUP, 0},
                           Row{ButtonSlot::Button4, WM_XBUTTONDOWN, WM_XBUTTONUP, XBUTTON1},
                           Row{ButtonSlot::Button5, WM_XBUTTONDOWN, WM_XBUTTONUP, XBUTTON2}}) {
        EXPECT_FALSE(Keeps(row.down, row.data));
        EXPECT_FALSE(Keeps(row.up, row.data));
        Choose(row.control, kOff);
        EXPECT_TRUE(Keeps(row.down, row.data));
        EXPECT_TRUE(Keeps(row.up, row.data));
    }
}

TEST_F(HookLoopTest, WhatAProgramMadePasses) {
    Choose(ButtonSlot::Center, kOff);
    EXPECT_FALSE(Keeps(WM_MBUTTONDOWN, 0, LLMHF_INJECTED));
    EXPECT_FALSE(Keeps(WM_MBUTTONUP, 0, LLMHF_LOWER_IL_INJECTED));
    EXPECT_EQ(loop.pressCount, 0U);
    EXPECT_NE(loop.lastPress, 0U);
}

TEST_F(HookLoopTest, ATiltIsAReportOfTheHorizontalWheel) {
    Choose(ButtonSlot::TiltLeft, kCopy);
    EXPECT_TRUE(Keeps(WM_MOUSEHWHEEL, static_cast<WORD>(-120)));
    EXPECT_FALSE(Keeps(WM_MOUSEHWHEEL, 120));
    EXPECT_EQ(recorder.Await("+Ctrl +C -C -Ctrl"), "+Ctrl +C -C -Ctrl");
}

TEST_F(HookLoopTest, PressesAndPushesByTheUserCount) {
    Keeps(WM_LBUTTONDOWN);
    Keeps(WM_LBUTTONUP);
    Keeps(WM_MOUSEHWHEEL, 120);
    Keeps(WM_MOUSEHWHEEL, 120);
    Keeps(WM_MOUSEHWHEEL, static_cast<WORD>(-120));
    time += 300;
    Keeps(WM_MOUSEHWHEEL, static_cast<WORD>(-120));
    Keeps(WM_MOUSEMOVE);
    Keeps(WM_MOUSEWHEEL, 120);
    EXPECT_EQ(loop.pressCount, 4U);
}

TEST_F(HookLoopTest, AMoveWakesWhoSleepsAndDecidesNothing) {
    activity.isSomeoneAsleep = true;
    EXPECT_FALSE(Keeps(WM_MOUSEMOVE));
    EXPECT_LT(GetTickCount() - activity.lastEvent, 5000U);
    EXPECT_FALSE(activity.isSomeoneAsleep);
    EXPECT_EQ(WaitForSingleObject(activity.wake.Get(), 0), WAIT_OBJECT_0);
    Keeps(WM_MOUSEMOVE);
    EXPECT_EQ(WaitForSingleObject(activity.wake.Get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(HookLoopTest, HeldButtonsCanBeAskedForFromElsewhere) {
    Choose(ButtonSlot::Button5, kOff);
    Keeps(WM_XBUTTONDOWN, XBUTTON2);
    EXPECT_EQ(loop.heldButtons, 1U << 4U);
    Keeps(WM_XBUTTONUP, XBUTTON2);
    EXPECT_EQ(loop.heldButtons, 0U);
}

TEST_F(HookLoopTest, NewSettingsHoldForTheNextPress) {
    Choose(ButtonSlot::Center, kOff);
    Choose(ButtonSlot::Center, kCopy);
    EXPECT_TRUE(Keeps(WM_MBUTTONDOWN));
    EXPECT_TRUE(Keeps(WM_MBUTTONUP));
    EXPECT_EQ(recorder.Await("+Ctrl +C -C -Ctrl"), "+Ctrl +C -C -Ctrl");
}

TEST_F(HookLoopTest, PressesAreNaturalWhileTheWorkerHangs) {
    Choose(ButtonSlot::Center, kCopy);
    ResetEvent(mayGoOn.Get());
    int kept = 0;
    while (kept < 200 && Keeps(WM_MBUTTONDOWN)) {
        EXPECT_TRUE(Keeps(WM_MBUTTONUP));
        ++kept;
    }
    EXPECT_LT(kept, 200);
    EXPECT_FALSE(Keeps(WM_MBUTTONUP));
    SetEvent(mayGoOn.Get());
    AwaitDone(static_cast<std::size_t>(kept));
}

TEST_F(HookLoopTest, WhoWatchesSeesPressesThatPassAndPressesThatAreKept) {
    Choose(ButtonSlot::Button4, kCopy);
    loop.presses.Watch();
    Keeps(WM_LBUTTONDOWN);
    Keeps(WM_LBUTTONUP);
    Keeps(WM_XBUTTONDOWN, XBUTTON1);
    Keeps(WM_XBUTTONUP, XBUTTON1);
    Keeps(WM_MOUSEHWHEEL, 120);
    Keeps(WM_MOUSEHWHEEL, 120);
    EXPECT_EQ(WaitForSingleObject(loop.presses.Came(), 0), WAIT_OBJECT_0);
    EXPECT_EQ(Seen(), "0:1 3:10 6:34 ");
    AwaitDone(1);
}

TEST_F(HookLoopTest, WhoWatchesSeesHowAStrokeEnds) {
    Choose(ButtonSlot::Center, model::kFunctionGesture);
    loop.presses.Watch();
    Keeps(WM_MBUTTONDOWN);
    EXPECT_EQ(Seen(), "2:36 ");
    Keeps(WM_MBUTTONUP);
    EXPECT_EQ(Seen(), "2:9 because of 3 ");
    Keeps(WM_MBUTTONDOWN);
    Keeps(WM_RBUTTONDOWN);
    EXPECT_EQ(Seen(), "2:36 2:0 because of 4 1:0 because of 5 ");
    AwaitDone(3);
}

TEST_F(HookLoopTest, WhoWatchesSeesPausedPressesAndNoneOfPrograms) {
    Choose(ButtonSlot::Button4, kCopy);
    loop.presses.Watch();
    Keeps(WM_XBUTTONDOWN, XBUTTON1, LLMHF_INJECTED);
    loop.Send({.kind = service::CommandKind::Pause, .isOn = true});
    Keeps(WM_XBUTTONDOWN, XBUTTON1);
    EXPECT_EQ(Seen(), "3:3 paused ");
}

TEST_F(HookLoopTest, NobodyWhoWatchesNoMoreIsToldOfAnything) {
    loop.presses.Watch();
    loop.presses.StopWatching();
    Keeps(WM_MBUTTONDOWN);
    EXPECT_EQ(Seen(), "");
    EXPECT_EQ(WaitForSingleObject(loop.presses.Came(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(HookLoopTest, NoDecisionTakesMemory) {
    Choose(ButtonSlot::Center, kCopy);
    loop.presses.Watch();
    CountAllocations();
    for (int round = 0; round < 10; ++round) {
        Keeps(WM_MBUTTONDOWN);
        Keeps(WM_MBUTTONUP);
        Keeps(WM_MOUSEMOVE);
        Keeps(WM_MOUSEWHEEL, 120);
    }
    EXPECT_EQ(StopCountingAllocations(), 0U);
    AwaitDone(10);
}

}  // namespace
}  // namespace kvn::test

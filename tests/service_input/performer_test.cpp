#include "service/input/performer.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <utility>

#include "tests/service_input/performer_fixture.h"
#include "tests/support/replaced_import.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using service::Order;
using service::OrderKind;

TEST_F(PerformerTest, KeysGoDownInTheirOrderAndUpInTheOppositeOne) {
    // None of them repeats while it is held.
    Begin(1, kKeys, {{VK_LCONTROL, VK_LSHIFT, VK_LMENU}});
    EXPECT_EQ(recorder.Await("+Ctrl +Shift +Alt"), "+Ctrl +Shift +Alt");
    End(1);
    EXPECT_EQ(recorder.Await("+Ctrl +Shift +Alt -Alt -Shift -Ctrl"), "+Ctrl +Shift +Alt -Alt -Shift -Ctrl");
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

TEST_F(PerformerTest, UnknownKeysAreLeftOut) {
    Act(kKeys, {{1000, 'A', model::kNoKey}});
    EXPECT_EQ(recorder.Await("+A -A"), "+A -A");
}

TEST_F(PerformerTest, WhatIsHeldIsInTheList) {
    Begin(1, kMiddleClick);
    Begin(2, kShift);
    EXPECT_EQ(recorder.Await("+Middle +Shift"), "+Middle +Shift");
    EXPECT_EQ(held.counts[VK_MBUTTON], 1);
    EXPECT_EQ(held.counts[VK_LSHIFT], 1);
    End(1);
    End(2);
    EXPECT_EQ(recorder.Await("+Middle +Shift -Middle -Shift"), "+Middle +Shift -Middle -Shift");
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

TEST_F(PerformerTest, AButtonOfTwoControlsGoesUpWithTheLast) {
    Begin(1, kLeftClick);
    Begin(2, kLeftClick);
    AwaitDone(2);
    End(1);
    Act(kCopy);  // comes after the first end could act
    AwaitDone(3);
    Await("the first end", [&] { return held.counts[VK_LBUTTON] == 1; });
    EXPECT_EQ(recorder.Await("+Left +Ctrl +C -C -Ctrl"), "+Left +Ctrl +C -C -Ctrl");
    End(2);
    EXPECT_EQ(recorder.Await("+Left +Ctrl +C -C -Ctrl -Left"), "+Left +Ctrl +C -C -Ctrl -Left");
}

TEST_F(PerformerTest, AButtonThatTheUserHoldsTooIsLeftToTheUser) {
    constexpr std::uint32_t kLeftIsPassed = 1, kRightIsPassed = 2;
    const auto take = [&](service::OrderKind kind, std::uint32_t passed) {
        service::Order order;
        order.kind = kind;
        order.function = kLeftClick;
        order.ticket = 1;
        order.passedButtons = passed;
        Take(order);
    };
    take(service::OrderKind::Begin, 0);
    take(service::OrderKind::End, kLeftIsPassed);
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
    take(service::OrderKind::Begin, kLeftIsPassed);
    take(service::OrderKind::End, 0);
    take(service::OrderKind::Act, kLeftIsPassed);
    take(service::OrderKind::Begin, kRightIsPassed);
    take(service::OrderKind::End, kRightIsPassed);
    EXPECT_EQ(recorder.Await("+Left +Left -Left"), "+Left +Left -Left");
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

// But for a worker that takes longer than a tenth of a second, as a busy machine may make it do once or twice.
TEST_F(PerformerTest, AnEndDoesNotOvertakeAnEarlierBeginning) {
    constexpr std::size_t kRounds = 20, kOvertaken = 2;
    for (service::Ticket ticket = 1; ticket <= 2 * kRounds; ticket += 2) {
        Begin(ticket, kLeftClick);
        Begin(ticket + 1, kLeftClick);
        End(ticket);
        End(ticket + 1);
    }
    AwaitDone(2 * kRounds);
    EXPECT_TRUE(ComesTrue([this] { return IsListEmpty(); }));
    Act(kShift);
    EXPECT_TRUE(ComesTrue([this] { return recorder.Count("-Shift") == 1; }));
    EXPECT_GE(recorder.Count("+Left"), kRounds);
    EXPECT_LE(recorder.Count("+Left"), kRounds + kOvertaken) << recorder.Text();
    EXPECT_EQ(recorder.Count("-Left"), recorder.Count("+Left"));
}

TEST_F(PerformerTest, AnEndThatOvertakesItsBeginningMakesAPressAndARelease) {
    End(7);
    Begin(7, kShift);
    EXPECT_EQ(recorder.Await("+Shift -Shift"), "+Shift -Shift");
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

TEST_F(PerformerTest, AKeyThatIsReleasedFirstGoesUpBeforeTheNextGoesDown) {
    constexpr std::uint32_t kRounds = 20;
    std::string expected;
    for (std::uint32_t ticket = 1; ticket <= 2 * kRounds; ticket += 2) {
        Begin(ticket, kShift);
        AwaitDone(ticket);
        End(ticket);
        Begin(ticket + 1, kMiddleClick);
        AwaitDone(ticket + 1);
        End(ticket + 1);
        expected += (expected.empty() ? "" : " ") + std::string("+Shift -Shift +Middle -Middle");
    }
    EXPECT_EQ(recorder.Await(expected), expected);
}

TEST_F(PerformerTest, AnEndDoesNotWaitForAWorkerThatHangs) {
    Begin(1, kShift);
    AwaitDone(1);
    ResetEvent(mayGoOn.Get());
    Act(kCopy);
    AwaitDone(2);
    End(1);
    EXPECT_EQ(recorder.Await("+Shift -Shift +Ctrl +C -C -Ctrl +Shift -Shift"),
              "+Shift -Shift +Ctrl +C -C -Ctrl +Shift -Shift");
}

TEST_F(PerformerTest, WhatWasHeldAndReleasedWhileTheWorkerHungIsPressedAndReleased) {
    ResetEvent(mayGoOn.Get());
    Act(kCopy);
    AwaitDone(1);
    Begin(1, kEnter);
    End(1);
    SetEvent(mayGoOn.Get());
    EXPECT_EQ(recorder.Await("+Ctrl +C -C -Ctrl +Enter -Enter"), "+Ctrl +C -C -Ctrl +Enter -Enter");
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

TEST_F(PerformerTest, AWorkerThatHangsLeavesNoRoomAfterAWhile) {
    EXPECT_TRUE(performer->HasRoom());
    ResetEvent(mayGoOn.Get());
    Act(kCopy);
    for (int order = 0; order < 100 && performer->HasRoom(); ++order) Act(kEnter);
    EXPECT_FALSE(performer->HasRoom());
    SetEvent(mayGoOn.Get());
    EXPECT_TRUE(ComesTrue([&] { return performer->HasRoom(); }));
}

TEST_F(PerformerTest, AltStaysDownWhileProgramsAreSwitched) {
    Begin(1, kSwitchPrograms);
    EXPECT_EQ(recorder.Await("+Alt +Tab -Tab"), "+Alt +Tab -Tab");
    End(1);
    EXPECT_EQ(recorder.Await("+Alt +Tab -Tab -Alt"), "+Alt +Tab -Tab -Alt");
}

TEST_F(PerformerTest, ADoubleClickIsTwoClicks) {
    Act(kDoubleClick);
    EXPECT_EQ(recorder.Await("+Left -Left +Left -Left"), "+Left -Left +Left -Left");
}

TEST_F(PerformerTest, AHeldFunctionThatActsIsPressedAndReleased) {
    Act(kBackButton);
    EXPECT_EQ(recorder.Await("+X1 -X1"), "+X1 -X1");
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

TEST_F(PerformerTest, AScrollIsSentInItsFullAmount) {
    Take(OrderKind::Scroll, -60);
    EXPECT_EQ(recorder.Await("HWheel-60"), "HWheel-60");
}

TEST_F(PerformerTest, AScrollThatActsIsOneStepOfTheSpeed) {
    Order order;
    order.kind = OrderKind::Act;
    order.function = kScrollLeft;
    order.horizontalSpeed = 8;
    Take(order);
    EXPECT_EQ(recorder.Await("HWheel-240"), "HWheel-240");
}

TEST_F(PerformerTest, EveryFunctionThatIsCarriedOutCounts) {
    Act(kCopy);
    Begin(1, kShift);
    End(1);
    Take(OrderKind::Note);
    AwaitDone(3);
    EXPECT_EQ(performer->ActionCount(), 2U);
}

TEST_F(PerformerTest, TheReportSaysWhatWasDone) {
    Act(kCopy);
    Act(kKeys, {{VK_LCONTROL, 'V', model::kNoKey}});
    Begin(1, kLeftClick);
    End(1);
    AwaitDone(3);
    EXPECT_EQ(Done(), (std::vector<std::wstring>{L"Ctrl+C", L"Left Ctrl+V", L"left button"}));
}

TEST_F(PerformerTest, AReleaseThatWindowsDoesNotTakeIsTriedAgain) {
    Begin(1, kShift);
    EXPECT_EQ(recorder.Await("+Shift"), "+Shift");
    {
        std::atomic<int> refusals = 0;
        const ReplacedImport<"SendInput", UINT(UINT, LPINPUT, int)> locked(GetModuleHandleW(nullptr),
                                                                           [&](UINT, LPINPUT, int) {
                                                                               ++refusals;
                                                                               return 0U;
                                                                           });
        ASSERT_TRUE(locked.IsInPlace());
        End(1);
        EXPECT_TRUE(ComesTrue([&] { return refusals >= 2; }));
        EXPECT_EQ(held.counts[VK_LSHIFT], 1);
    }
    EXPECT_EQ(recorder.Await("+Shift -Shift"), "+Shift -Shift");
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
}

// Wine sends the named button even when buttons are swapped, so the test checks the calls of SendInput.
TEST_F(PerformerTest, WithSwappedButtonsTheLeftOneIsThePhysicalRightOneUntilItsRelease) {
    std::mutex flagsLock;
    std::vector<DWORD> flags;
    const ReplacedImport<"SendInput", UINT(UINT, LPINPUT, int)> watched(
        GetModuleHandleW(nullptr), [&](UINT count, LPINPUT inputs, int) {
            const std::lock_guard guard(flagsLock);
            for (UINT index = 0; index < count; ++index) flags.push_back(inputs[index].mi.dwFlags);
            return count;
        });
    SwapMouseButton(TRUE);
    Begin(1, kLeftClick);
    AwaitDone(1);
    SwapMouseButton(FALSE);
    End(1);
    EXPECT_TRUE(ComesTrue([&] { return IsListEmpty(); }));
    const std::lock_guard guard(flagsLock);
    EXPECT_EQ(flags, (std::vector<DWORD>{MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP}));
}

TEST_F(PerformerTest, ItsEndReleasesWhatIsHeld) {
    Begin(1, kShift);
    Begin(2, kLeftClick);
    EXPECT_EQ(recorder.Await("+Shift +Left"), "+Shift +Left");
    performer.reset();
    EXPECT_EQ(recorder.Await("+Shift +Left -Shift -Left"), "+Shift +Left -Shift -Left");
    EXPECT_TRUE(IsListEmpty());
}

TEST_F(PerformerTest, ItsEndDoesNotWaitForAWorkerThatHangs) {
    Begin(1, kShift);
    AwaitDone(1);
    ResetEvent(mayGoOn.Get());
    Act(kEnter);
    AwaitDone(2);
    const auto start = std::chrono::steady_clock::now();
    performer.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
    EXPECT_EQ(recorder.Await("+Shift +Enter -Enter -Shift"), "+Shift +Enter -Enter -Shift");
    EXPECT_TRUE(IsListEmpty());
}

// The thread releases the outlets when it has ended.
TEST_F(PerformerTest, AKeeperThatHungMakesNoCallsAfterTheEnd) {
    ResetEvent(mayGoOn.Get());
    std::atomic<int> calls = 0;
    auto outletLives = std::make_shared<int>();
    const std::weak_ptr<int> threadLives = outletLives;
    service::HeldList ownList;
    auto hanging = std::make_unique<service::Performer>(
        ownList, service::Performer::Outlets{.onDone = {},
                                             .onStroke = [this, &calls, kept = std::move(outletLives)](const Order&) {
                                                 ++calls;
                                                 WaitForSingleObject(mayGoOn.Get(), INFINITE);
                                             }});
    ASSERT_TRUE(hanging->Start());
    service::Orders stroke;
    for (const OrderKind kind : {OrderKind::StrokeBegin, OrderKind::StrokeEnd}) {
        Order order;
        order.kind = kind;
        stroke.Add(order);
    }
    hanging->Take(stroke);
    Await("the keeper", [&] { return calls == 1; });
    hanging.reset();
    SetEvent(mayGoOn.Get());
    ASSERT_TRUE(ComesTrue([&] { return threadLives.expired(); }));
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace kvn::test

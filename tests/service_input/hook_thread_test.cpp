#include "service/input/hook_thread.h"

#include "service/input/key_sending.h"
#include "tests/service_input/performer_fixture.h"
#include "tests/support/replaced_import.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

using model::ButtonSlot;

class HookThreadTest : public PerformerTest {
protected:
    HookThreadTest() {
        settings.functions[ButtonSlot::Center] = kOff;
        hook.Use(settings);
        EXPECT_TRUE(hook.Start());
    }

    static void ClickTheWheel() {
        service::InputBatch batch;
        batch.ButtonDown(VK_MBUTTON);
        batch.ButtonUp(VK_MBUTTON);
        batch.Send();
    }

    service::EngineSettings settings;
    service::MouseActivity activity;
    service::HookThread hook{*performer, activity};
};

TEST_F(HookThreadTest, InputOfAnotherProgramPassesAndShowsThatTheHookLives) {
    EXPECT_TRUE(hook.IsInstalled());
    ClickTheWheel();
    EXPECT_EQ(recorder.Await("+Middle -Middle"), "+Middle -Middle");
    EXPECT_NE(hook.LastPress(), 0U);
    EXPECT_EQ(hook.PressCount(), 0U);
}

TEST_F(HookThreadTest, CommandsTakeEffectWithoutAnyEventOfTheMouse) {
    hook.GestureEditBegin();
    EXPECT_TRUE(ComesTrue([&] { return hook.IsGestureEdited(); }));
    hook.GestureEditEnd();
    EXPECT_TRUE(ComesTrue([&] { return !hook.IsGestureEdited(); }));
    hook.GestureEditBegin();
    hook.GestureEditBegin();
    hook.GestureEditForgotten();
    EXPECT_TRUE(ComesTrue([&] { return !hook.IsGestureEdited(); }));
}

TEST_F(HookThreadTest, ManyCommandsAtOnceAllArriveInTheirOrder) {
    for (int round = 0; round < 1000; ++round) {
        hook.Use(settings);
        hook.GestureEditBegin();
        hook.Pause(round % 2 == 0);
        hook.GestureEditEnd();
    }
    EXPECT_TRUE(ComesTrue([&] { return !hook.IsGestureEdited(); }));
    EXPECT_TRUE(hook.IsInstalled());
}

TEST_F(HookThreadTest, AHookThatIsInstalledAgainSeesTheMouse) {
    hook.Reinstall();
    hook.GestureEditBegin();  // shows that the command before it is done
    EXPECT_TRUE(ComesTrue([&] { return hook.IsGestureEdited(); }));
    EXPECT_TRUE(hook.IsInstalled());
    ClickTheWheel();
    EXPECT_TRUE(ComesTrue([&] { return hook.LastPress() != 0; }));
}

TEST_F(HookThreadTest, ANewHookComesBeforeTheOldOneGoes) {
    std::string steps;
    const ReplacedImport<"SetWindowsHookExW", decltype(SetWindowsHookExW)> set(
        GetModuleHandleW(nullptr),
        [&steps, original = &SetWindowsHookExW](int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread) {
            steps += "set ";
            return original(kind, procedure, module, thread);
        });
    const ReplacedImport<"UnhookWindowsHookEx", decltype(UnhookWindowsHookEx)> remove(
        GetModuleHandleW(nullptr), [&steps, original = &UnhookWindowsHookEx](HHOOK removed) {
            steps += "remove ";
            return original(removed);
        });
    ASSERT_TRUE(set.IsInPlace() && remove.IsInPlace());
    hook.Reinstall();
    hook.GestureEditBegin();  // shows that the command before it is done
    EXPECT_TRUE(ComesTrue([&] { return hook.IsGestureEdited(); }));
    EXPECT_EQ(steps, "set remove ");
}

class HookThreadOfAHeldButtonTest : public PerformerTest {
protected:
    HookThreadOfAHeldButtonTest() {
        service::InputBatch batch;
        batch.ButtonDown(VK_MBUTTON);
        batch.Send();
    }
    ~HookThreadOfAHeldButtonTest() override {
        service::InputBatch batch;
        batch.ButtonUp(VK_MBUTTON);
        batch.Send();
    }
};

TEST_F(HookThreadOfAHeldButtonTest, KnowsItFromTheStart) {
    EXPECT_EQ(recorder.Await("+Middle"), "+Middle");
    service::MouseActivity activity;
    service::HookThread hook{*performer, activity};
    ASSERT_TRUE(hook.Start());
    EXPECT_EQ(hook.HeldButtons(), 0b00100U);
}

}  // namespace
}  // namespace kvn::test

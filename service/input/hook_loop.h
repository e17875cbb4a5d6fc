// The body of the hook thread: the hook, the engine, and the commands of other threads.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>

#include "platform/unique_resource.h"
#include "service/engine/engine.h"
#include "service/input/mailbox.h"
#include "service/input/mouse_activity.h"
#include "service/input/mouse_messages.h"
#include "service/input/performer.h"
#include "service/input/press_feed.h"

namespace kvn::service {

using UniqueHook = platform::Owned<HHOOK, &UnhookWindowsHookEx>;

class HookLoop {
public:
    HookLoop(Performer& orderTaker, MouseActivity& mouseActivity);
    HookLoop(const HookLoop&) = delete;
    HookLoop& operator=(const HookLoop&) = delete;

    // The body of the thread, until the command Quit.
    void Run();

    // For other threads. Send returns false if the loop does not take commands.
    bool Send(const Command& command);
    bool Send(const EngineSettings& settings);
    // Signalled after the first attempt to install the hook.
    HANDLE Ready() const { return ready.Get(); }

    // Figures that other threads may read at any time.
    std::atomic<bool> isInstalled = false;
    std::atomic<bool> isGestureEdited = false;
    std::atomic<std::uint32_t> heldButtons = 0;
    std::atomic<std::uint64_t> pressCount = 0;
    std::atomic<std::uint32_t> lastPress = 0;
    PressFeed presses;

    // For the hook and the table of commands; on the hook thread only.
    bool Keeps(WPARAM message, const MSLLHOOKSTRUCT& details);
    void Install();
    void UseNewestSettings();
    void Quit() { isEnding = true; }
    Engine engine;
    Orders orders;

private:
    void Wake();
    void NoteHeldButtons();
    void Serve(const MSG& message);
    void CarryOutCommands();
    void CarryOut(const Command& command);
    Verdict Decide(const MouseEvent& event);
    void Tick();
    void ReportPress(const MouseEvent& event, Verdict verdict);
    void HandOver();
    void Publish();
    void NoteActivity();
    void NoteEvent(const MouseEvent& event);
    void WatchTicks();

    Performer& performer;
    MouseActivity& activity;
    Mailbox mailbox;
    UniqueHook hook;
    platform::UniqueKernelObject ready{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<DWORD> threadId = 0;
    UINT_PTR ticks = 0;  // the timer; 0: none
    bool isEnding = false;
    bool isOverloaded = false;
};

}  // namespace kvn::service

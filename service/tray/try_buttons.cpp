#include "service/tray/try_buttons.h"

#include <array>
#include <atomic>
#include <utility>

#include "platform/boundary.h"
#include "platform/thread_start.h"
#include "service/tray/try_texts.h"
#include "service/tray/try_window.h"

namespace kvn::service {
namespace {

constexpr DWORD kLongestStart = 5'000;  // milliseconds
constexpr DWORD kLongestFarewell = 900;

void ServeMessages(const TryWindow& window) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (window.IsOpen() && window.TakesKey(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace

struct TryButtons::State {
    State(PressFeed& feed, Outlets chosenOutlets) : presses(feed), outlets(std::move(chosenOutlets)) {}

    PressFeed& presses;
    Outlets outlets;
    platform::UniqueKernelObject ready{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<HWND> window = nullptr;  // while it is open

    // A message to no window would go to the own thread.
    bool Post(UINT message) const {
        const HWND receiver = window;
        return receiver != nullptr && PostMessageW(receiver, message, 0, 0) != FALSE;
    }
    ShownPress Shown(const SeenPress& press) const {
        return {.control = ControlText(press.control),
                .effect = EffectText(press),
                .profile = outlets.nameOfProfile(press.profile),
                .program = ProgramText(outlets.programInFront())};
    }
    void ShowNewOnes(const TryWindow& shown) const {
        SeenPress press;
        while (shown.IsOpen() && presses.Take(press)) shown.Add(Shown(press));
    }
};

TryButtons::TryButtons(PressFeed& feed, Outlets chosenOutlets) : presses(feed), outlets(std::move(chosenOutlets)) {}

TryButtons::~TryButtons() {
    if (!IsOpen()) return;
    state->Post(WM_CLOSE);
    WaitForSingleObject(thread.Get(), kLongestFarewell);
}

bool TryButtons::IsOpen() const {
    return thread && WaitForSingleObject(thread.Get(), 0) == WAIT_TIMEOUT;
}

// A window that is just closing takes no more messages, but its thread ends soon.
bool TryButtons::Open() {
    if (IsOpen() && state->Post(kComeToFrontMessage)) return true;
    // Only one thread at a time may take presses from the feed.
    if (thread && WaitForSingleObject(thread.Get(), kLongestFarewell) != WAIT_OBJECT_0) return false;
    state = std::make_shared<State>(presses, outlets);
    thread = platform::StartThread(state, Run, THREAD_PRIORITY_NORMAL);
    if (!thread) return false;
    const std::array signals{state->ready.Get(), thread.Get()};
    return WaitForMultipleObjects(signals.size(), signals.data(), FALSE, kLongestStart) == WAIT_OBJECT_0;
}

void TryButtons::Run(State& state) {
    TryWindow window;
    if (!window.Create()) return;
    state.window = window.Handle();
    state.presses.Watch();
    SetEvent(state.ready.Get());
    platform::Completes([&] { window.ComeToFront(); });
    while (window.IsOpen()) {
        const HANDLE came = state.presses.Came();
        const DWORD count = came == nullptr ? 0 : 1;
        MsgWaitForMultipleObjectsEx(count, &came, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        platform::Completes([&] { ServeMessages(window); });
        platform::Completes([&] { state.ShowNewOnes(window); });
    }
    state.presses.StopWatching();
}

}  // namespace kvn::service

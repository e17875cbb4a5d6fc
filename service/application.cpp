#include "service/application.h"

#include <array>
#include <utility>

#include "model/registry_values.h"
#include "service/lifecycle/ending.h"
#include "service/options/arguments.h"
#include "service/page/page_search.h"
#include "service/page/window_numbers.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"
#include "service/resources/service_version.h"
#include "service/tray/greeting.h"
#include "service/tray/panels.h"

namespace kvn::service {

Application::Application()
    : shared(memory.State()),
      watcher(memory),
      window(*this),
      protocol(ProtocolOutlets()),
      session(SessionOutlets()),
      tray({.state = [this] { return CurrentTrayState(); },
            .onChoice = [this](const TrayChoice& choice) { OnTrayChoice(choice); }}),
      transfer(TransferOutlets()) {}

Application::~Application() {
    End();
}

PageProtocol::Outlets Application::ProtocolOutlets() {
    return {.isMouseKnown = [this] { return driver->Mouse().has_value(); },
            .onSettingsChanged = [this] { driver->Settings().Reread(); },
            .onGestureEditBegin = [this] { driver->Hook().GestureEditBegin(); },
            .onGestureEditEnd = [this] { driver->Hook().GestureEditEnd(); },
            .onGestureEditForgotten = [this] { driver->Hook().GestureEditForgotten(); },
            .isGestureEdited = [this] { return driver->Hook().IsGestureEdited(); },
            .isButtonHeld = [this](model::ButtonSlot button) { return driver->IsHeld(button); },
            .isPageOpen = [] { return IsPageOpen(); }};
}

SessionEvents::Outlets Application::SessionOutlets() {
    return {.onLeft = [this] { driver->LeaveSession(session.IsActive()); },
            .onReturned = [this] { driver->ReturnToSession(); },
            .onResumed = [this] { driver->Reinstall(); },
            .onSwapped = [this](bool areSwapped) { driver->Hook().Swapped(areSwapped); },
            .onEnd = [this] { RequestEnd(), End(); }};
}

// Passes reports of other threads on to this one.
MouseDriver::Outlets Application::DriverOutlets() {
    return {
        .onChange = [this] { posted.Post([this] { tray.Refresh(); }); },
        .onStroke = [this](const Order& order) { posted.Post([this, order] { OnStroke(order); }); },
        .onProblem =
            [this](SettingsProblem problem, const std::wstring& path) {
                posted.Post([this, problem, path] { OnProblem(problem, path); });
            },
    };
}

TransferDialogs::Outlets Application::TransferOutlets() {
    return {.onImported =
                [this] {
                    posted.Post([this] {
                        if (driver != nullptr) driver->Settings().Reread();
                    });
                },
            .onDone =
                [this](const std::wstring& text) { posted.Post([this, text] { tray.ShowBalloon(text, NIIF_INFO); }); }};
}

// Called on the thread of that window.
TryButtons::Outlets Application::TryOutlets() {
    return {.nameOfProfile = [this](std::uint32_t profile) { return driver->NameOf(profile); },
            .programInFront = [this] { return driver->Settings().ProgramInFront(); }};
}

bool Application::Start(const CommandLine& commands) {
    if (!window.Create()) return false;
    posted.RunOn(window.Handle());
    driver = std::make_unique<MouseDriver>(shared.held, DriverOutlets());
    tryButtons = std::make_unique<TryButtons>(driver->Hook().Presses(), TryOutlets());
    if (commands.logFile) driver->LogTo(*commands.logFile);
    KeepOptions(commands);
    if (!driver->Start(window.Handle(), commands.mouse)) return false;
    SessionEvents::Watch(window.Handle());
    tray.Show(window.Handle());
    if (isEnding) return true;  // the session ended during the call to the taskbar
    watcher.Start(commands.watcherProcess.value_or(0));
    window.Announce();
    Greet(commands.mouse.has_value());
    return true;
}

void Application::Greet(bool isChosenMouse) {
    if (!driver->Hook().IsInstalled()) tray.ShowBalloon(Text(IDS_BALLOON_NO_HOOK), NIIF_ERROR);
    if (!isChosenMouse && IsFirstStart()) tray.ShowBalloon(Text(IDS_BALLOON_FIRST_START), NIIF_INFO);
}

// Stores them for the watcher, in case it has to start the service again.
void Application::KeepOptions(const CommandLine& commands) {
    if (commands.mouse) keptMouse = commands.mouse;
    if (commands.logFile) keptLog = *commands.logFile;
    CommandLine kept;
    kept.mouse = keptMouse;
    if (!keptLog.empty()) kept.logFile = keptLog;
    shared.KeepArguments(Quoted(ArgumentsForService(kept)));
}

Answer Application::CarryOut(const CommandLine& commands) {
    if (driver == nullptr) return {};
    if (commands.quits) RequestEnd();
    if (commands.mouse) driver->Choose(*commands.mouse);
    if (commands.logFile) driver->LogTo(*commands.logFile);
    if (commands.mouse || commands.logFile) KeepOptions(commands);
    Answer answer;
    if (commands.profile) answer = ForceProfile(*commands.profile == kAutomaticProfile ? L"" : *commands.profile);
    if (commands.rereads) driver->Reread();
    if (commands.pause) driver->Pause(*commands.pause);
    if (answer.exitCode == kDone && commands.wantsSettings) answer = OpenSettings();
    if (answer.exitCode == kDone && commands.wantsTry) answer = OpenTry();
    if (commands.wantsStatus) answer.text += StatusText(driver->CurrentStatus());
    return answer;
}

Answer Application::ForceProfile(const std::wstring& name) {
    if (driver->Force(name)) return {};
    return Fault(IDS_FAULT_UNKNOWN_PROFILE, name);
}

Answer Application::OpenSettings() {
    if (OpenMouseControlPanel()) return {};
    return Fault(IDS_FAULT_SETTINGS);
}

Answer Application::OpenTry() {
    if (tryButtons->Open()) return {};
    return Fault(IDS_FAULT_TRY);
}

// Shows a failure in a balloon.
void Application::ShowFailure(const Answer& answer) {
    if (!answer.text.empty()) tray.ShowBalloon(answer.text, NIIF_ERROR);
}

void Application::OnTrayChoice(const TrayChoice& choice) {
    if (driver == nullptr) return;
    if (const auto* const profile = std::get_if<std::wstring>(&choice)) {
        static_cast<void>(ForceProfile(*profile));
    } else {
        OnTrayCommand(std::get<TrayCommand>(choice));
    }
    tray.Refresh();
}

void Application::OnTrayCommand(TrayCommand command) {
    switch (command) {
        case TrayCommand::Settings:
            ShowFailure(OpenSettings());
            break;
        case TrayCommand::Automatic:
            static_cast<void>(ForceProfile({}));
            break;
        case TrayCommand::Pause:
            driver->Pause(!driver->IsPaused());
            break;
        case TrayCommand::Try:
            ShowFailure(OpenTry());
            break;
        case TrayCommand::Export:
            transfer.OpenExport();
            break;
        case TrayCommand::Import:
            transfer.OpenImport();
            break;
        case TrayCommand::Help:
            // The thread may outlive this object, so it must not have a pointer to it.
            OpenHelpPage([receiver = window.Handle()] { PostMessageW(receiver, kHelpFailedMessage, 0, 0); });
            break;
        case TrayCommand::About:
            ShowAbout();
            break;
        case TrayCommand::Exit:
            RequestEnd();
            break;
    }
}

TrayState Application::CurrentTrayState() const {
    if (driver == nullptr) return {};
    return {.mouse = driver->Mouse() ? model::MouseIdsText(driver->Mouse()->vid, driver->Mouse()->pid) : std::wstring(),
            .profile = driver->Mouse() ? driver->Settings().InForce().name : std::wstring(),
            .forcedProfile = driver->Settings().ForcedProfile(),
            .profiles = driver->Settings().ProfileNames(),
            .isPaused = driver->IsPaused()};
}

void Application::ShowAbout() {
    about.Open([] {
        MessageBoxW(nullptr, Text(IDS_SERVICE_ABOUT, kVersion).c_str(), Text(IDS_SERVICE_CAPTION).c_str(),
                    MB_OK | MB_ICONINFORMATION | MB_SETFOREGROUND);
    });
}

void Application::OnStroke(const Order& order) {
    const POINT place{order.place.x, order.place.y};
    if (order.kind == OrderKind::StrokeBegin) trail.Begin(place);
    if (order.kind == OrderKind::StrokeMove) trail.MoveTo(place);
    if (order.kind == OrderKind::StrokeEnd) trail.End();
}

void Application::OnProblem(SettingsProblem problem, const std::wstring& path) {
    const bool wasSetAside = problem == SettingsProblem::FileSetAside;
    tray.ShowBalloon(Text(wasSetAside ? IDS_BALLOON_FILE_SET_ASIDE : IDS_BALLOON_FILE_UNREADABLE, path), NIIF_WARNING);
}

std::optional<LRESULT> Application::OnMessage(const Message& message) {
    if (driver == nullptr) return std::nullopt;
    const std::array<IMessageHandler*, 5> handlers{&posted, &protocol, driver.get(), &tray, &session};
    for (IMessageHandler* const handler : handlers) {
        if (const auto answer = handler->OnMessage(message)) return answer;
        if (isEnding) return 0;
    }
    return OnOwnMessage(message);
}

std::optional<LRESULT> Application::OnOwnMessage(const Message& message) {
    switch (message.id) {
        case WM_COPYDATA:
            return OnHandedOver(message);
        case kHelpFailedMessage:
            tray.ShowBalloon(Text(IDS_FAULT_HELP), NIIF_ERROR);
            return 0;
        case WM_CLOSE:
            RequestEnd();
            return 0;
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> Application::OnHandedOver(const Message& message) {
    const auto request = ReadHandedOver(message.wParam, message.lParam);
    if (!request) return FALSE;
    const auto parsed = ParseArguments(SplitCommandLine(L"x " + request->arguments));
    const auto* const commands = std::get_if<CommandLine>(&parsed);
    if (commands == nullptr) return FALSE;
    return Reply(message.window, *request, CarryOut(*commands));
}

void Application::Run() {
    MSG message{};
    for (;;) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_QUIT && shared.hasEnded != 0) return;
            // No timer of this window has a procedure, but another program could post one in lParam.
            if (message.message == WM_TIMER && message.hwnd == window.Handle()) message.lParam = 0;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        const HANDLE watched = watcher.Process();
        const DWORD count = watched == nullptr ? 0 : 1;
        const DWORD woken = MsgWaitForMultipleObjectsEx(count, &watched, watcher.MillisecondsToRetry(), QS_ALLINPUT,
                                                        MWMO_INPUTAVAILABLE);
        const bool isWatcherGone = woken == WAIT_TIMEOUT || (count == 1 && woken == WAIT_OBJECT_0);
        if (isWatcherGone && !isEnding) watcher.Replace();
    }
}

// Ends the loop, and with it the service. An open menu or message box ends too.
void Application::RequestEnd() {
    shared.hasEnded = 1;
    EndMenu();
    PostQuitMessage(0);
}

void Application::End() {
    if (std::exchange(isEnding, true)) return;
    const EndInTime guard(shared.held);
    shared.hasEnded = 1;
    transfer.Close();
    window.Withdraw();
    tray.Remove();
    trail.End();
    tryButtons.reset();
    driver.reset();
    ReleaseAll(shared.held);
}

}  // namespace kvn::service

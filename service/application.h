// The whole service: its window and the handlers of its messages, the mouse, the icon, the watcher.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/dialog_thread.h"
#include "service/driver/mouse_driver.h"
#include "service/lifecycle/session_events.h"
#include "service/lifecycle/shared_state.h"
#include "service/lifecycle/watcher.h"
#include "service/options/command_line.h"
#include "service/options/handover.h"
#include "service/page/page_protocol.h"
#include "service/page/posted_work.h"
#include "service/page/service_window.h"
#include "service/transfer/transfer_dialogs.h"
#include "service/tray/trail_window.h"
#include "service/tray/tray_icon.h"
#include "service/tray/try_buttons.h"

namespace kvn::service {

class Application : private IMessageHandler {
public:
    Application();
    virtual ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    // If it returns true, the mouse is driven and the page can find the service.
    [[nodiscard]] bool Start(const CommandLine& commands);
    // Carries out the options of this start or of another one.
    Answer CarryOut(const CommandLine& commands);
    // Runs until the service ends.
    void Run();

private:
    std::optional<LRESULT> OnMessage(const Message& message) override;
    std::optional<LRESULT> OnOwnMessage(const Message& message);
    std::optional<LRESULT> OnHandedOver(const Message& message);

    PageProtocol::Outlets ProtocolOutlets();
    SessionEvents::Outlets SessionOutlets();
    MouseDriver::Outlets DriverOutlets();
    TryButtons::Outlets TryOutlets();

    TransferDialogs::Outlets TransferOutlets();

    Answer ForceProfile(const std::wstring& name);
    static Answer OpenSettings();
    Answer OpenTry();
    void ShowFailure(const Answer& answer);
    void OnTrayChoice(const TrayChoice& choice);
    void OnTrayCommand(TrayCommand command);
    TrayState CurrentTrayState() const;
    void ShowAbout();
    void OnStroke(const Order& order);
    void OnProblem(SettingsProblem problem, const std::wstring& path);
    void Greet(bool isChosenMouse);
    void KeepOptions(const CommandLine& commands);
    void RequestEnd();
    void End();

    SharedMemory memory;
    SharedState& shared;
    Watcher watcher;
    PostedWork posted;
    ServiceWindow window;
    PageProtocol protocol;
    SessionEvents session;
    TrayIcon tray;
    TransferDialogs transfer;
    platform::DialogThread about;
    TrailWindow trail;
    std::unique_ptr<MouseDriver> driver;     // empty before the start and at the end
    std::unique_ptr<TryButtons> tryButtons;  // lives as long as the driver, whose presses it shows
    std::optional<ChosenMouse> keptMouse;
    std::wstring keptLog;
    bool isEnding = false;
};

}  // namespace kvn::service

// The icon in the taskbar's notification area: its tip, its menu and its balloons.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/unique_resource.h"
#include "service/page/message_handler.h"
#include "service/tray/tray_menu.h"

namespace kvn::service {

// The lines of the tip; at most 127 characters.
std::wstring TrayTip(const TrayState& state);

class TrayIcon : public IMessageHandler {
public:
    struct Outlets {
        std::function<TrayState()> state;
        std::function<void(const TrayChoice&)> onChoice;
    };

    explicit TrayIcon(Outlets chosenOutlets);
    virtual ~TrayIcon() { Remove(); }
    TrayIcon(const TrayIcon&) = delete;
    TrayIcon& operator=(const TrayIcon&) = delete;

    // The window gets the icon's messages. If there is no taskbar yet, the icon appears as soon as there is one.
    void Show(HWND messageWindow);
    void Refresh();
    void Remove();

    // `kind` is NIIF_INFO, NIIF_WARNING or NIIF_ERROR. Without a taskbar, the balloon waits for it.
    void ShowBalloon(const std::wstring& text, DWORD kind);

    std::optional<LRESULT> OnMessage(const Message& message) override;

private:
    struct Balloon {
        std::wstring text;
        DWORD kind = NIIF_NONE;
    };

    NOTIFYICONDATAW Data(UINT flags) const;
    void Add();
    bool Shows(const Balloon& balloon) const;
    void ShowWaitingBalloons();
    void OnIconEvent(UINT event);
    void OpenMenu();

    Outlets outlets;
    HWND window = nullptr;
    UINT taskbarCreated;
    platform::Owned<HICON, &DestroyIcon> icon;
    platform::Owned<HICON, &DestroyIcon> pausedIcon;
    std::vector<Balloon> waiting;
    bool isMenuOpen = false;
    bool isRightClick = false;  // the icon's last event
};

}  // namespace kvn::service

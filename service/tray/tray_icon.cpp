#include "service/tray/tray_icon.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "platform/module.h"
#include "platform/raised_flag.h"
#include "platform/window_text.h"
#include "service/page/window_numbers.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

constexpr UINT kIconNumber = 1;
constexpr std::size_t kMostWaiting = 8;

HICON LoadSmallIcon(UINT id) {
    HICON loaded = nullptr;
    LoadIconMetric(platform::ThisModule(), MAKEINTRESOURCEW(id), LIM_SMALL, &loaded);
    return loaded;
}

// Copies as much as fits, with a final zero.
template <std::size_t kSize>
void Copy(const std::wstring& text, wchar_t (&field)[kSize]) {
    const std::wstring cut = platform::CutText(text, static_cast<int>(kSize) - 1);
    *std::ranges::copy(cut, field).out = L'\0';
}

}  // namespace

std::wstring TrayTip(const TrayState& state) {
    std::wstring tip = state.mouse.empty() ? Text(IDS_TRAY_NO_MOUSE) : Text(IDS_TRAY_MOUSE, state.mouse);
    if (state.isPaused) tip += L" - " + Text(IDS_TRAY_PAUSED);
    if (!state.profile.empty()) tip += L'\n' + Text(IDS_TRAY_PROFILE, OnOneLine(state.profile));
    return tip;
}

TrayIcon::TrayIcon(Outlets chosenOutlets)
    : outlets(std::move(chosenOutlets)),
      taskbarCreated(RegisterWindowMessageW(L"TaskbarCreated")),
      icon(LoadSmallIcon(IDI_SERVICE)),
      pausedIcon(LoadSmallIcon(IDI_SERVICE_PAUSED)) {
    // Explorer may have fewer rights than a service that was started as administrator.
    ChangeWindowMessageFilter(taskbarCreated, MSGFLT_ADD);
}

NOTIFYICONDATAW TrayIcon::Data(UINT flags) const {
    const TrayState state = outlets.state();
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof data;
    data.hWnd = window;
    data.uID = kIconNumber;
    data.uFlags = flags;
    data.uCallbackMessage = kTrayMessage;
    data.hIcon = state.isPaused ? pausedIcon.Get() : icon.Get();
    Copy(TrayTip(state), data.szTip);
    return data;
}

void TrayIcon::Show(HWND messageWindow) {
    window = messageWindow;
    Add();
}

void TrayIcon::Add() {
    NOTIFYICONDATAW data = Data(NIF_MESSAGE | NIF_ICON | NIF_TIP);
    Shell_NotifyIconW(NIM_ADD, &data);
    data.uVersion = NOTIFYICON_VERSION;
    Shell_NotifyIconW(NIM_SETVERSION, &data);
    ShowWaitingBalloons();
}

void TrayIcon::Refresh() {
    if (window == nullptr) return;
    NOTIFYICONDATAW data = Data(NIF_ICON | NIF_TIP);
    // If the taskbar was busy at the start, there is no icon to change yet.
    if (!Shell_NotifyIconW(NIM_MODIFY, &data)) Add();
}

void TrayIcon::Remove() {
    if (window == nullptr) return;
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof data;
    data.hWnd = window;
    data.uID = kIconNumber;
    Shell_NotifyIconW(NIM_DELETE, &data);
    window = nullptr;
}

void TrayIcon::ShowBalloon(const std::wstring& text, DWORD kind) {
    if (window == nullptr) return;
    if (const Balloon balloon{text, kind}; !Shows(balloon) && waiting.size() < kMostWaiting) waiting.push_back(balloon);
}

bool TrayIcon::Shows(const Balloon& balloon) const {
    NOTIFYICONDATAW data = Data(NIF_INFO);
    data.dwInfoFlags = balloon.kind;
    Copy(Text(IDS_SERVICE_CAPTION), data.szInfoTitle);
    Copy(balloon.text, data.szInfo);
    return Shell_NotifyIconW(NIM_MODIFY, &data) != FALSE;
}

void TrayIcon::ShowWaitingBalloons() {
    std::erase_if(waiting, [this](const Balloon& balloon) { return Shows(balloon); });
}

std::optional<LRESULT> TrayIcon::OnMessage(const Message& message) {
    if (window == nullptr) return std::nullopt;
    if (message.id == taskbarCreated) {
        Add();
        return 0;
    }
    if (message.id != kTrayMessage) return std::nullopt;
    OnIconEvent(static_cast<UINT>(message.lParam));
    return 0;
}

// For a right click Windows sends WM_RBUTTONUP and then WM_CONTEXTMENU; an old Windows sends only the first. For the
// keyboard it sends only WM_CONTEXTMENU.
void TrayIcon::OnIconEvent(UINT event) {
    const bool wasRightClick = std::exchange(isRightClick, event == WM_RBUTTONUP);
    if (event == WM_RBUTTONUP || (event == WM_CONTEXTMENU && !wasRightClick)) OpenMenu();
    if (event == WM_LBUTTONDBLCLK || event == NIN_KEYSELECT) outlets.onChoice(TrayCommand::Settings);
}

void TrayIcon::OpenMenu() {
    if (isMenuOpen) return;
    std::optional<TrayChoice> choice;
    {
        const platform::RaisedFlag open(isMenuOpen);
        choice = ShowTrayMenu(window, outlets.state());
    }
    if (choice) outlets.onChoice(*choice);
}

}  // namespace kvn::service

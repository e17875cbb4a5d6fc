#include "tests/service_double/double_window.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "platform/boundary.h"
#include "platform/service_protocol.h"
#include "tests/service_double/console_text.h"
#include "tests/service_double/settings_request.h"

namespace kvn::service_double {
namespace {

using platform::ServiceButton;
using platform::ServiceMessage;

constexpr wchar_t kClassName[] = L"KvnStandInService";
// The application range of messages. An unknown number in it is a mistake of the page: it is answered with 0 and
// logged.
constexpr UINT kFirstPrivateMessage = WM_APP;
constexpr UINT kLastPrivateMessage = WM_APP + 0xFF;

struct MessageRow {
    ServiceMessage message;
    const wchar_t* name;
};

constexpr std::array<MessageRow, 5> kMessages{{
    {ServiceMessage::SettingsChanged, L"SettingsChanged"},
    {ServiceMessage::Probe, L"Probe"},
    {ServiceMessage::GestureEditBegin, L"GestureEditBegin"},
    {ServiceMessage::GestureEditEnd, L"GestureEditEnd"},
    {ServiceMessage::IsButtonHeld, L"IsButtonHeld"},
}};

const wchar_t* NameOf(UINT message) {
    const auto row = std::find_if(kMessages.begin(), kMessages.end(),
                                  [=](const MessageRow& each) { return static_cast<UINT>(each.message) == message; });
    return row == kMessages.end() ? L"Unknown" : row->name;
}

struct ButtonRow {
    ServiceButton button;
    int virtualKey;
};

// Both columns of this table mean the physical button: GetAsyncKeyState ignores swapped buttons.
constexpr std::array<ButtonRow, 5> kButtons{{
    {ServiceButton::Left, VK_LBUTTON},
    {ServiceButton::Right, VK_RBUTTON},
    {ServiceButton::Center, VK_MBUTTON},
    {ServiceButton::Button4, VK_XBUTTON1},
    {ServiceButton::Button5, VK_XBUTTON2},
}};

bool IsButtonDown(LPARAM button) {
    return std::any_of(kButtons.begin(), kButtons.end(), [=](const ButtonRow& row) {
        return static_cast<LPARAM>(row.button) == button && GetAsyncKeyState(row.virtualKey) < 0;
    });
}

const wchar_t* Describe(SettingsReply reply) {
    switch (reply) {
        case SettingsReply::Delivered:
            return L"delivered";
        case SettingsReply::NoPage:
            return L"it is not open";
        case SettingsReply::PageDidNotAnswer:
            return L"it does not answer";
        case SettingsReply::NotUnderstood:
        case SettingsReply::ServiceDidNotAnswer:
            break;
    }
    return L"not understood";
}

std::wstring Join(const std::vector<std::int32_t>& numbers) {
    std::wstring text;
    for (const std::int32_t number : numbers) {
        if (!text.empty()) text += L',';
        text += std::to_wstring(number);
    }
    return text;
}

std::wstring Hexadecimal(const std::vector<std::byte>& bytes) {
    std::wstring text;
    for (const std::byte byte : bytes) text += Format(L" %02x", static_cast<unsigned>(byte));
    return text;
}

}  // namespace

ServiceWindow::~ServiceWindow() {
    if (window != nullptr) DestroyWindow(window);
}

bool ServiceWindow::Create(HINSTANCE instance) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kClassName;
    if (RegisterClassExW(&windowClass) == 0) return false;
    const HWND created = CreateWindowExW(0, kClassName, platform::kServiceName, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                         CW_USEDEFAULT, 760, 320, nullptr, nullptr, instance, this);
    // The program that started this one may override the first ShowWindow call. A hidden window needs no call.
    if (created != nullptr && options.showWindow) ShowWindow(created, SW_SHOWNORMAL);
    return created != nullptr;
}

LRESULT CALLBACK ServiceWindow::WindowProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        auto* created = static_cast<ServiceWindow*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->window = handle;
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<ServiceWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (self == nullptr) return DefWindowProcW(handle, message, wParam, lParam);
    return platform::AtBoundary(LRESULT{0}, [&] { return self->OnMessage(message, wParam, lParam); });
}

LRESULT ServiceWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= kFirstPrivateMessage && message <= kLastPrivateMessage) {
        return OnServiceMessage(message, wParam, lParam);
    }
    switch (message) {
        case WM_CREATE:
            return OnCreate() ? 0 : -1;
        case WM_COPYDATA:
            return OnCopyData(reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        case WM_SIZE:
            MoveWindow(view, 0, 0, LOWORD(lParam), HIWORD(lParam), TRUE);
            return 0;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

bool ServiceWindow::OnCreate() {
    if (!options.showWindow) return true;
    view = CreateWindowExW(
        0, L"EDIT", nullptr,
        WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL,
        0, 0, 0, 0, window, nullptr, nullptr, nullptr);
    if (view == nullptr) return false;
    font.Reset(CreateFontW(-12, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                           CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, FIXED_PITCH | FF_MODERN, L"Consolas"));
    SendMessageW(view, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), FALSE);
    SendMessageW(view, EM_SETLIMITTEXT, 0, 0);
    log.ShowIn(view);
    return true;
}

void ServiceWindow::OnDestroy() {
    log.ShowIn(nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    window = nullptr;
    PostQuitMessage(0);
}

LRESULT ServiceWindow::OnServiceMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT reply = 0;
    if (message == static_cast<UINT>(ServiceMessage::Probe)) reply = options.probeReply;
    if (message == static_cast<UINT>(ServiceMessage::IsButtonHeld)) reply = NextHeldReply(lParam);
    log.Write(Format(L"%u (0x%04x) %ls wParam=%llu lParam=%lld reply=%lld %ls", message, message, NameOf(message),
                     static_cast<unsigned long long>(wParam), static_cast<long long>(lParam),
                     static_cast<long long>(reply), InSendMessage() ? L"sent" : L"posted"));
    return reply;
}

LRESULT ServiceWindow::NextHeldReply(LPARAM button) {
    const auto& replies = options.heldReplies;
    if (replies.empty()) return IsButtonDown(button) ? 1 : 0;
    const std::size_t index = std::min(heldRepliesGiven, replies.size() - 1);
    ++heldRepliesGiven;
    return replies[index];
}

LRESULT ServiceWindow::OnCopyData(const COPYDATASTRUCT* data) {
    const std::optional<SettingsRequest> request = ReadRequest(data);
    if (!request) return static_cast<LRESULT>(SettingsReply::NotUnderstood);
    const SettingsReply reply = SendSettings(window, *request);
    log.Write(L"settings " + Join(request->settings) + L" to the page: " + Describe(reply));
    const std::vector<std::byte> record = RecordOf(*request);
    log.Write(std::to_wstring(record.size()) + L" bytes of WM_COPYDATA:" + Hexadecimal(record));
    return static_cast<LRESULT>(reply);
}

}  // namespace kvn::service_double

#include "tests/service_input/recorder_window.h"

#include <algorithm>
#include <array>

#include "tests/support/owning_types.h"
#include "tests/support/real_input.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

constexpr wchar_t kClass[] = L"KvnInputRecorder";

struct NameRow {
    UINT code;
    const char* name;
};

constexpr std::array<NameRow, 10> kKeyNames{{{VK_SHIFT, "Shift"},
                                             {VK_CONTROL, "Ctrl"},
                                             {VK_MENU, "Alt"},
                                             {VK_LWIN, "Win"},
                                             {VK_RWIN, "RWin"},
                                             {VK_TAB, "Tab"},
                                             {VK_RETURN, "Enter"},
                                             {VK_DELETE, "Delete"},
                                             {VK_PAUSE, "Pause"},
                                             {0xE8, "Mask"}}};

constexpr std::array<NameRow, 8> kButtonMessages{{{WM_LBUTTONDOWN, "+Left"},
                                                  {WM_LBUTTONUP, "-Left"},
                                                  {WM_RBUTTONDOWN, "+Right"},
                                                  {WM_RBUTTONUP, "-Right"},
                                                  {WM_MBUTTONDOWN, "+Middle"},
                                                  {WM_MBUTTONUP, "-Middle"},
                                                  {WM_XBUTTONDOWN, "+X"},
                                                  {WM_XBUTTONUP, "-X"}}};

constexpr std::array<NameRow, 4> kCommands{
    {{SC_CLOSE, "close"}, {SC_MAXIMIZE, "maximize"}, {SC_RESTORE, "restore"}, {SC_MINIMIZE, "minimize"}}};

template <std::size_t kRows>
std::string NameIn(const std::array<NameRow, kRows>& rows, UINT code) {
    const auto row = std::ranges::find(rows, code, &NameRow::code);
    return row == rows.end() ? std::string() : row->name;
}

bool IsRight(UINT key, LPARAM details) {
    const UINT scanCode = HIWORD(details) & 0xFFU;
    const bool isExtended = (HIWORD(details) & KF_EXTENDED) != 0;
    if (key == VK_SHIFT) return scanCode == 0x36;
    return (key == VK_CONTROL || key == VK_MENU) && isExtended;
}

std::string NameOfKey(UINT key, LPARAM details) {
    const std::string name = NameIn(kKeyNames, key);
    if (name.empty()) return std::string(1, static_cast<char>(key));
    if (key == VK_PAUSE) return name + std::to_string(HIWORD(details) & (0xFFU | KF_EXTENDED));
    return IsRight(key, details) ? "R" + name : name;
}

bool IsKeyMessage(UINT message) {
    return message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_KEYUP || message == WM_SYSKEYUP;
}

std::string NameOfButton(UINT message, WPARAM wParam) {
    // A second press may come as a double click.
    if (message == WM_LBUTTONDBLCLK) return "+Left";
    const std::string name = NameIn(kButtonMessages, message);
    return name.ends_with("X") ? name + std::to_string(HIWORD(wParam)) : name;
}

}  // namespace

RecorderWindow::RecorderWindow(DWORD style) {
    std::promise<HWND> made;
    thread = std::thread([&] { Run(style, made); });
    window = made.get_future().get();
    BringToFront(window);
    SetCursorPos(300, 300);
    AwaitInputTaken(window);
    Clear();
}

RecorderWindow::~RecorderWindow() {
    PostMessageW(window, WM_APP, 0, 0);
    thread.join();
}

void RecorderWindow::Run(DWORD style, std::promise<HWND>& made) {
    const RegisteredClass registered(kClass, OnMessage);
    const HWND created = CreateWindowExW(WS_EX_TOPMOST, kClass, L"Recorder", style | WS_VISIBLE, 0, 0, 1024, 768,
                                         nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(created, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetForegroundWindow(created);
    made.set_value(created);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

LRESULT CALLBACK RecorderWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const recorder = reinterpret_cast<RecorderWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_APP) DestroyWindow(window);
    if (message == WM_DESTROY) PostQuitMessage(0);
    if (recorder != nullptr && recorder->Take(message, wParam, lParam)) return 0;
    return DefWindowProcW(window, message, wParam, lParam);
}

bool RecorderWindow::Take(UINT message, WPARAM wParam, LPARAM lParam) {
    if (IsKeyMessage(message)) {
        const bool isDown = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
        Record((isDown ? "+" : "-") + NameOfKey(static_cast<UINT>(wParam), lParam));
        return true;
    }
    if (message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL) {
        Record((message == WM_MOUSEWHEEL ? "Wheel" : "HWheel") + std::to_string(GET_WHEEL_DELTA_WPARAM(wParam)));
        return true;
    }
    const std::string button = NameOfButton(message, wParam);
    if (!button.empty()) Record(button);
    const std::string command = message == WM_SYSCOMMAND ? NameIn(kCommands, static_cast<UINT>(wParam)) : "";
    if (!command.empty()) Record(command);
    return !button.empty() || !command.empty();
}

void RecorderWindow::Record(const std::string& entry) {
    const std::lock_guard guard(lock);
    entries.push_back(entry);
}

std::string RecorderWindow::Text() {
    const std::lock_guard guard(lock);
    std::string text;
    for (const std::string& entry : entries) text += (text.empty() ? "" : " ") + entry;
    return text;
}

std::string RecorderWindow::Await(const std::string& expected) {
    ComesTrue([&] { return Text() == expected; });
    return Text();
}

std::size_t RecorderWindow::Count(const std::string& entry) {
    const std::lock_guard guard(lock);
    return static_cast<std::size_t>(std::ranges::count(entries, entry));
}

void RecorderWindow::Clear() {
    const std::lock_guard guard(lock);
    entries.clear();
}

}  // namespace kvn::test

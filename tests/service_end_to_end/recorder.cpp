// A program that the service does not know, with a window that records the input that reaches it, one line each.
//
//   sent down C [Ctrl]      a key, with the modifiers that are down beside it; "again" follows if it was already down
//   real left up            a button
//   sent hwheel -120        a wheel
//   posted SC_CLOSE         a command of the window's menu
//   window front            the window came to the front, or went back
//
// With --times, the same lines go to a second file, each with its time in milliseconds before it.
//
// "real" came from mouse or keyboard, "sent" was made by a program. Nothing is acted on, unless --obey is given.
#include <windows.h>

#include <shellapi.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "model/key_names.h"
#include "platform/unique_resource.h"
#include "tests/service_end_to_end/recorder_protocol.h"
#include "tests/support/owning_types.h"

namespace kvn::service_end_to_end {
namespace {

struct Options {
    std::wstring title = L"Recorder";
    std::wstring log;
    std::wstring times;
    std::wstring windowClass = kRecorderClass;
    RECT place{0, 0, 500, 400};
    bool obeys = false;
    bool hasDialog = false;
};

std::optional<platform::UniqueFile> logFile, timesFile;
bool obeysCommands = false;

struct ModifierRow {
    int key;
    const char* name;
};

constexpr std::array<ModifierRow, 5> kModifiers{
    {{VK_SHIFT, "Shift"}, {VK_CONTROL, "Ctrl"}, {VK_MENU, "Alt"}, {VK_LWIN, "Win"}, {VK_RWIN, "Win"}}};

// Which modifiers are down, by the messages that came: Wine's GetKeyState may already know of later ones.
class Modifiers {
public:
    void Note(int key, bool isDownNow) {
        for (std::size_t row = 0; row < kModifiers.size(); ++row) {
            if (kModifiers[row].key == key) isDown[row] = isDownNow;
        }
    }
    // What happened while another window was in front sent no message.
    void Update() {
        for (const ModifierRow& row : kModifiers) Note(row.key, GetAsyncKeyState(row.key) < 0);
    }
    // Those that are down, but for `key` itself.
    std::string Beside(int key) const {
        std::string names;
        for (std::size_t row = 0; row < kModifiers.size(); ++row) {
            if (kModifiers[row].key == key || !isDown[row]) continue;
            names += (names.empty() ? "" : "+") + std::string(kModifiers[row].name);
        }
        return names.empty() ? "" : " [" + names + ']';
    }

private:
    std::array<bool, kModifiers.size()> isDown{};
};

Modifiers modifiers;

void WriteTo(const std::optional<platform::UniqueFile>& file, const std::string& line) {
    if (!file) return;
    const std::string ended = line + '\n';
    DWORD written = 0;
    WriteFile(file->Get(), ended.data(), static_cast<DWORD>(ended.size()), &written, nullptr);
}

void WriteLine(const std::string& line) {
    WriteTo(timesFile, std::to_string(GetTickCount64()) + ' ' + line);
    WriteTo(logFile, line);
}

void OpenForLines(const std::wstring& path, std::optional<platform::UniqueFile>& file) {
    if (path.empty()) return;
    file.emplace(CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                             nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

const char* Origin() {
    INPUT_MESSAGE_SOURCE source{};
    GetCurrentInputMessageSource(&source);
    return source.originId == IMO_INJECTED ? "sent " : "real ";
}

std::string NameOfKey(WPARAM key) {
    const wchar_t* const name = model::KeyNameOf(static_cast<model::KeyCode>(key));
    if (name == nullptr) return "key " + std::to_string(key);
    return {name, name + std::wstring_view(name).size()};
}

// The scan code and the extended flag that this key has on the keyboard's layout.
bool HasItsOwnScanCode(WPARAM key, LPARAM details) {
    const UINT side = MapVirtualKeyW(static_cast<UINT>(details >> 16) & 0xFF, MAPVK_VSC_TO_VK);
    const UINT expected = MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC);
    return side == key || ((static_cast<UINT>(details >> 16) & 0xFF) == expected && expected != 0);
}

void RecordKey(WPARAM key, LPARAM details) {
    const bool isUp = (details & (1LL << 31)) != 0;
    const bool wasDown = (details & (1LL << 30)) != 0;
    std::string line = Origin() + std::string(isUp ? "up " : "down ") + NameOfKey(key);
    modifiers.Note(static_cast<int>(key), !isUp);
    line += modifiers.Beside(static_cast<int>(key));
    if (!isUp && wasDown) line += " again";
    if ((details & (1LL << 24)) != 0) line += " extended";
    if (!HasItsOwnScanCode(key, details)) line += " with a strange scan code";
    WriteLine(line);
}

struct ButtonRow {
    UINT message;
    const char* text;
};

constexpr std::array<ButtonRow, 6> kButtons{{{WM_LBUTTONDOWN, "left down"},
                                             {WM_LBUTTONUP, "left up"},
                                             {WM_RBUTTONDOWN, "right down"},
                                             {WM_RBUTTONUP, "right up"},
                                             {WM_MBUTTONDOWN, "wheel down"},
                                             {WM_MBUTTONUP, "wheel up"}}};

bool RecordButton(UINT message, WPARAM wParam) {
    std::string text;
    for (const ButtonRow& row : kButtons) {
        if (row.message == message) text = row.text;
    }
    if (message == WM_XBUTTONDOWN || message == WM_XBUTTONUP) {
        text = GET_XBUTTON_WPARAM(wParam) == XBUTTON1 ? "back" : "forward";
        text += message == WM_XBUTTONDOWN ? " down" : " up";
    }
    if (text.empty()) return false;
    WriteLine(Origin() + text + modifiers.Beside(0));
    return true;
}

bool RecordWheel(UINT message, WPARAM wParam) {
    if (message != WM_MOUSEWHEEL && message != WM_MOUSEHWHEEL) return false;
    WriteLine(Origin() + std::string(message == WM_MOUSEWHEEL ? "turn " : "hwheel ") +
              std::to_string(GET_WHEEL_DELTA_WPARAM(wParam)) + modifiers.Beside(0));
    return true;
}

struct CommandRow {
    WPARAM command;
    const char* name;
};

constexpr std::array<CommandRow, 4> kCommands{
    {{SC_CLOSE, "SC_CLOSE"}, {SC_MAXIMIZE, "SC_MAXIMIZE"}, {SC_MINIMIZE, "SC_MINIMIZE"}, {SC_RESTORE, "SC_RESTORE"}}};

void RecordCommand(HWND window, WPARAM command) {
    const char* const way = InSendMessage() ? "told " : "posted ";
    const char* const whom = GetWindow(window, GW_OWNER) == nullptr ? "" : " to the dialog";
    for (const CommandRow& row : kCommands) {
        if (row.command == (command & 0xFFF0)) WriteLine(way + std::string(row.name) + whom);
    }
}

bool RecordInput(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= WM_KEYFIRST && message <= WM_KEYLAST) {
        const bool isKey =
            message == WM_KEYDOWN || message == WM_KEYUP || message == WM_SYSKEYDOWN || message == WM_SYSKEYUP;
        if (isKey) RecordKey(wParam, lParam);
        return true;
    }
    return RecordButton(message, wParam) || RecordWheel(message, wParam);
}

void RecordActivation(bool isInFront) {
    if (isInFront) modifiers.Update();
    WriteLine(isInFront ? "window front" : "window back");
}

void ShowPointer(HWND window, DWORD place) {
    SetPropW(window, kPointerProperty, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(place)));
}

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (RecordInput(message, wParam, lParam)) return 0;
    if (message == WM_SYSCOMMAND) {
        RecordCommand(window, wParam);
        if (!obeysCommands) return 0;
    }
    if (message == WM_MOUSEMOVE) ShowPointer(window, GetMessagePos());
    if (message == kHangFor) Sleep(static_cast<DWORD>(wParam));
    if (message == WM_ACTIVATE) RecordActivation(LOWORD(wParam) != WA_INACTIVE);
    if (message == WM_DESTROY && GetWindow(window, GW_OWNER) == nullptr) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

Options ReadOptions() {
    Options options;
    int count = 0;
    const test::UniqueArguments words(CommandLineToArgvW(GetCommandLineW(), &count));
    wchar_t* const* const arguments = words.Get();
    for (int index = 1; index < count; ++index) {
        const std::wstring_view option = arguments[index];
        if (option == L"--obey") options.obeys = true;
        if (option == L"--dialog") options.hasDialog = true;
        if (index + 1 == count) break;
        if (option == L"--log") options.log = arguments[index + 1];
        if (option == L"--times") options.times = arguments[index + 1];
        if (option == L"--class") options.windowClass = arguments[index + 1];
        if (option == L"--title") options.title = arguments[index + 1];
        if (option == L"--left") {
            OffsetRect(&options.place, static_cast<int>(wcstol(arguments[index + 1], nullptr, 10)), 0);
        }
    }
    return options;
}

HWND Open(const Options& options, const std::wstring& title, DWORD style, const RECT& place, HWND owner) {
    const HWND window = CreateWindowExW(0, options.windowClass.c_str(), title.c_str(), style, place.left, place.top,
                                        place.right - place.left, place.bottom - place.top, owner, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    ShowPointer(window, kUnseenPointer);
    return window;
}

void OpenWindows(const Options& options) {
    const HWND window = Open(options, options.title, WS_OVERLAPPEDWINDOW | WS_VISIBLE, options.place, nullptr);
    if (!options.hasDialog) {
        SetForegroundWindow(window);
        return;
    }
    RECT inside = options.place;
    InflateRect(&inside, -100, -100);
    SetForegroundWindow(
        Open(options, options.title + L" dialog", WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, inside, window));
}

void RegisterRecorder(const Options& options) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &WindowProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = options.windowClass.c_str();
    RegisterClassW(&windowClass);
}

}  // namespace

int Run() {
    const Options options = ReadOptions();
    obeysCommands = options.obeys;
    OpenForLines(options.log, logFile);
    OpenForLines(options.times, timesFile);
    RegisterRecorder(options);
    OpenWindows(options);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

}  // namespace kvn::service_end_to_end

int WINAPI wWinMain(HINSTANCE, HINSTANCE, wchar_t*, int) {
    return kvn::service_end_to_end::Run();
}

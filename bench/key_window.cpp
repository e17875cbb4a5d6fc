#include "bench/key_window.h"

#include <array>
#include <string>

#include "tests/support/started_process.h"

namespace kvn::bench {
namespace {

constexpr wchar_t kClass[] = L"KvnBenchKeyWindow";
constexpr wchar_t kEventName[] = L"KvnBenchKeyCame";
constexpr wchar_t kSectionName[] = L"KvnBenchKeyTime";
constexpr DWORD kPatience = 10'000;

platform::UniqueKernelObject OpenEvent() {
    return platform::UniqueKernelObject(CreateEventW(nullptr, FALSE, FALSE, kEventName));
}

platform::UniqueKernelObject OpenSection() {
    return platform::UniqueKernelObject(
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(std::int64_t), kSectionName));
}

using MappedTime = platform::Owned<void*, &UnmapViewOfFile>;

MappedTime MapTime(HANDLE section) {
    return MappedTime(MapViewOfFile(section, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(std::int64_t)));
}

struct Notes {
    platform::UniqueKernelObject came = OpenEvent();
    platform::UniqueKernelObject section = OpenSection();
    MappedTime time = MapTime(section.Get());
};

LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static const Notes notes;
    if (message == WM_KEYDOWN || message == WM_KEYUP) {
        QueryPerformanceCounter(static_cast<LARGE_INTEGER*>(notes.time.Get()));
        SetEvent(notes.came.Get());
    }
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND FindKeyWindow() {
    for (DWORD waited = 0; waited < kPatience; waited += 10) {
        const HWND found = FindWindowW(kClass, nullptr);
        if (found != nullptr && GetForegroundWindow() == found) return found;
        Sleep(10);
    }
    return nullptr;
}

}  // namespace

void RunKeyWindow() {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = OnMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClass;
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(WS_EX_TOPMOST, kClass, nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 1024, 768, nullptr,
                                        nullptr, windowClass.hInstance, nullptr);
    SetForegroundWindow(window);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

KeyWindow::KeyWindow() : came(OpenEvent()), section(OpenSection()), time(MapTime(section.Get())) {
    std::array<wchar_t, MAX_PATH> path{};
    GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
    const std::wstring command = L'"' + std::wstring(path.data()) + L"\" --key-window";
    process = test::StartProcess(command).process;
    if (!process) return;
    window = FindKeyWindow();
}

KeyWindow::~KeyWindow() {
    PostMessageW(window, WM_CLOSE, 0, 0);
    if (process) WaitForSingleObject(process.Get(), kPatience);
}

std::optional<std::int64_t> KeyWindow::AwaitKey() const {
    if (WaitForSingleObject(came.Get(), kPatience) != WAIT_OBJECT_0) return std::nullopt;
    return *static_cast<const std::int64_t*>(time.Get());
}

}  // namespace kvn::bench

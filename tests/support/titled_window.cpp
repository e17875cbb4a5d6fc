// A program with one window, until it is asked to close: titled_window TITLE [CLASS [PARENT]] With only a title it
// stays in front of all others. PARENT is the title of another program's window, inside which this one is then created.
#include <windows.h>

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = count > 2 ? arguments[2] : L"KvnTitledWindow";
    RegisterClassW(&windowClass);
    const HWND parent = count > 3 ? FindWindowW(nullptr, arguments[3]) : nullptr;
    CreateWindowExW(count > 2 ? 0 : WS_EX_TOPMOST, windowClass.lpszClassName, count > 1 ? arguments[1] : L"",
                    (parent ? WS_CHILD : WS_OVERLAPPEDWINDOW) | WS_VISIBLE, 0, 0, 200, 100, parent, nullptr,
                    windowClass.hInstance, nullptr);
    MSG message{};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

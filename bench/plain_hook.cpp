#include "bench/plain_hook.h"

namespace kvn::bench {
namespace {

LRESULT CALLBACK PassOn(int code, WPARAM message, LPARAM details) {
    return CallNextHookEx(nullptr, code, message, details);
}

LRESULT CALLBACK PressEscape(int code, WPARAM message, LPARAM details) {
    const auto& event = *reinterpret_cast<const MSLLHOOKSTRUCT*>(details);
    const bool isButton = message == WM_XBUTTONDOWN || message == WM_XBUTTONUP;
    if (code != HC_ACTION || !isButton || event.flags != 0) return CallNextHookEx(nullptr, code, message, details);
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = VK_ESCAPE;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(VK_ESCAPE, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = message == WM_XBUTTONUP ? KEYEVENTF_KEYUP : 0;
    SendInput(1, &input, sizeof input);
    return 1;
}

}  // namespace

PlainHook::PlainHook(Kind chosenKind) : kind(chosenKind) {
    thread.Reset(CreateThread(nullptr, 0, Run, this, 0, &threadId));
    WaitForSingleObject(ready.Get(), INFINITE);
}

PlainHook::~PlainHook() {
    PostThreadMessageW(threadId, WM_QUIT, 0, 0);
    WaitForSingleObject(thread.Get(), INFINITE);
}

DWORD WINAPI PlainHook::Run(void* self) noexcept {
    const auto& hook = *static_cast<const PlainHook*>(self);
    MSG message{};
    PeekMessageW(&message, nullptr, WM_USER, WM_USER, PM_NOREMOVE);  // makes the queue
    SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_HIGHEST);
    const HOOKPROC procedure = hook.kind == Kind::PassesOn ? PassOn : PressEscape;
    const platform::Owned<HHOOK, &UnhookWindowsHookEx> installed(
        SetWindowsHookExW(WH_MOUSE_LL, procedure, GetModuleHandleW(nullptr), 0));
    SetEvent(hook.ready.Get());
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

}  // namespace kvn::bench

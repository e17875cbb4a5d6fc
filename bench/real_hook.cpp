#include "bench/real_hook.h"

#include <windows.h>

#include <atomic>

namespace {

using Install = HHOOK WINAPI(int, HOOKPROC, HINSTANCE, DWORD);

std::atomic<bool> isOfUser = false;
std::atomic<HOOKPROC> procedure = nullptr;

LRESULT CALLBACK WithoutMark(int code, WPARAM message, LPARAM details) {
    MSLLHOOKSTRUCT event = *reinterpret_cast<const MSLLHOOKSTRUCT*>(details);
    if (message == WM_XBUTTONDOWN || message == WM_XBUTTONUP) event.flags = 0;
    return procedure.load()(code, message, reinterpret_cast<LPARAM>(&event));
}

}  // namespace

// The linker's --wrap: NAME's address in the import table is __real_NAME, and the program takes __wrap_NAME.
extern "C" {

extern Install* __real___imp_SetWindowsHookExW;

static HHOOK WINAPI InstallHook(int kind, HOOKPROC hook, HINSTANCE module, DWORD thread) {
    if (!isOfUser) return __real___imp_SetWindowsHookExW(kind, hook, module, thread);
    procedure = hook;
    return __real___imp_SetWindowsHookExW(kind, WithoutMark, module, thread);
}

extern Install* const __wrap___imp_SetWindowsHookExW = InstallHook;
}

namespace kvn::bench {

HookOfUserInput::HookOfUserInput() {
    isOfUser = true;
}

HookOfUserInput::~HookOfUserInput() {
    isOfUser = false;
}

}  // namespace kvn::bench

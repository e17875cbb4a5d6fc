#include "tests/support/window_messages.h"

#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

platform::UniqueKernelObject ProcessOf(HWND window) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return platform::UniqueKernelObject(
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
}

}  // namespace

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kPatienceMilliseconds, &answer) == 0) {
        throw NoAnswer(Describe(window) + " does not answer message " + std::to_string(message));
    }
    return static_cast<LRESULT>(answer);
}

WindowMemory::WindowMemory(HWND window, std::size_t bytes) : process(ProcessOf(window)), size(bytes) {
    address = process ? VirtualAllocEx(process.Get(), nullptr, bytes, MEM_COMMIT, PAGE_READWRITE) : nullptr;
    if (address == nullptr) throw NoAnswer("no memory in the process of " + Describe(window));
}

WindowMemory::~WindowMemory() {
    VirtualFreeEx(process.Get(), address, 0, MEM_RELEASE);
}

void WindowMemory::WriteFrom(const void* copy) const {
    if (!WriteProcessMemory(process.Get(), address, copy, size, nullptr)) throw NoAnswer("a window cannot be asked");
}

void WindowMemory::ReadTo(void* copy) const {
    if (!ReadProcessMemory(process.Get(), address, copy, size, nullptr)) throw NoAnswer("a window's answer is lost");
}

}  // namespace kvn::test

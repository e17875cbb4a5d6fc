#include "tests/end_to_end/windows_of_process.h"

#include <commctrl.h>

#include <array>

#include "platform/unique_resource.h"
#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

constexpr UINT kAnswerMilliseconds = 20'000;

struct TopLevelSearch {
    DWORD processId;
    const std::function<bool(HWND)>& isWanted;
    HWND found;
};

BOOL CALLBACK StopAtWanted(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<TopLevelSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search.processId || !search.isWanted(window)) return TRUE;
    search.found = window;
    return FALSE;
}

// Memory in the process of a window.
class RemoteMemory {
public:
    RemoteMemory(HWND window, std::size_t bytes) : size(bytes) {
        DWORD id = 0;
        GetWindowThreadProcessId(window, &id);
        process.Reset(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id));
        address = process ? VirtualAllocEx(process.Get(), nullptr, bytes, MEM_COMMIT, PAGE_READWRITE) : nullptr;
        if (address == nullptr) throw StoryError("no memory in the process of " + Describe(window));
    }
    ~RemoteMemory() { VirtualFreeEx(process.Get(), address, 0, MEM_RELEASE); }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;

    LPARAM Address() const { return reinterpret_cast<LPARAM>(address); }
    bool WriteFrom(const void* copy) const {
        return WriteProcessMemory(process.Get(), address, copy, size, nullptr) != FALSE;
    }
    bool ReadTo(void* copy) const { return ReadProcessMemory(process.Get(), address, copy, size, nullptr) != FALSE; }

private:
    platform::UniqueKernelObject process;
    void* address = nullptr;
    std::size_t size;
};

}  // namespace

std::string Describe(HWND window) {
    return test::Narrow(ClassOf(window)) + " \"" + test::Narrow(TitleOf(window)) + "\" (" +
           std::to_string(GetDlgCtrlID(window)) + ")";
}

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kAnswerMilliseconds, &answer) == 0) {
        throw StoryError(Describe(window) + " does not answer message " + std::to_string(message));
    }
    return static_cast<LRESULT>(answer);
}

std::wstring TextOf(HWND window) {
    std::array<wchar_t, 2048> text{};
    Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return text.data();
}

HWND FindTopLevel(DWORD processId, const std::function<bool(HWND)>& isWanted) {
    TopLevelSearch search{processId, isWanted, nullptr};
    EnumWindows(&StopAtWanted, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

HWND FocusOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) ? info.hwndFocus : nullptr;
}

RECT ScreenRectangle(HWND window) {
    RECT rectangle{};
    if (!GetWindowRect(window, &rectangle)) throw StoryError("a window that is to be used has gone");
    return rectangle;
}

void Click(HWND window) {
    ClickAt(MiddleOf(ScreenRectangle(window)));
}

POINT MiddleOf(const RECT& area) {
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

RECT ReadRectangle(HWND window, UINT message, WPARAM wParam, LONG kind) {
    const RemoteMemory memory(window, sizeof(RECT));
    RECT rectangle{kind, 0, 0, 0};
    if (!memory.WriteFrom(&rectangle) || !Send(window, message, wParam, memory.Address()) ||
        !memory.ReadTo(&rectangle)) {
        throw StoryError(Describe(window) + " reports no rectangle");
    }
    return rectangle;
}

std::wstring ReadListText(HWND list, int row, int column) {
    std::array<wchar_t, 256> text{};
    const RemoteMemory textMemory(list, sizeof text);
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = reinterpret_cast<wchar_t*>(textMemory.Address());
    item.cchTextMax = static_cast<int>(text.size());
    const RemoteMemory itemMemory(list, sizeof item);
    if (!itemMemory.WriteFrom(&item)) throw StoryError(Describe(list) + " cannot be asked for a text");
    Send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), itemMemory.Address());
    if (!textMemory.ReadTo(text.data())) throw StoryError(Describe(list) + " reports no text");
    return text.data();
}

}  // namespace kvn::end_to_end

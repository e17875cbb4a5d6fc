#include "tests/support/lasting_cost.h"

#include <windows.h>

#include <thread>

#include "tests/support/owning_types.h"
#include "tests/support/resource_use.h"

namespace kvn::test {
namespace {

constexpr std::size_t kTimes = 8;

struct Held {
    HeapUse process = UseOf(GetProcessHeap());
    HeapUse runtime = UseOf(RuntimeHeap());
    std::size_t gdiObjects = CountGdiObjects();
};

std::size_t Growth(std::size_t before, std::size_t after) {
    return after > before ? after - before : 0;
}

HWND MakeWindow(HWND parent, const wchar_t* windowClass, DWORD style) {
    return CreateWindowExW(0, windowClass, L"a reference", style, 0, 0, 200, 200, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

UniqueWindow MakeParent() {
    return UniqueWindow(MakeWindow(nullptr, L"STATIC", WS_POPUP | WS_VISIBLE));
}

void HandlePostedMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

void UseTextField(HWND parent) {
    SetFocus(MakeWindow(parent, L"EDIT", WS_CHILD | WS_VISIBLE));
    HandlePostedMessages();
}

LRESULT CALLBACK HearOfNoEnd(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY || message == WM_NCDESTROY) return 0;
    const auto original = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return CallWindowProcW(original, window, message, wParam, lParam);
}

void MakeUnheardChooser(HWND parent, std::size_t entries) {
    const HWND chooser = MakeWindow(parent, L"COMBOBOX", WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST);
    for (std::size_t i = 0; i < entries; ++i) {
        SendMessageW(chooser, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"an entry"));
    }
    SetWindowLongPtrW(chooser, GWLP_USERDATA, GetWindowLongPtrW(chooser, GWLP_WNDPROC));
    SetWindowLongPtrW(chooser, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HearOfNoEnd));
}

}  // namespace

LastingCost LastingCost::Of(std::size_t times) const {
    const auto of = [times](std::size_t cost) { return cost * times / kTimes; };
    return {of(processBlocks), of(runtimeBlocks), of(runtimeBytes), of(gdiObjects)};
}

LastingCost CostOf(const std::function<void()>& deed) {
    // Allocations of the first time that stay for the life of the process do not count.
    for (std::size_t i = 0; i < kTimes; ++i) deed();
    const Held before;
    for (std::size_t i = 0; i < kTimes; ++i) deed();
    const Held after;
    return {Growth(before.process.blocks, after.process.blocks), Growth(before.runtime.blocks, after.runtime.blocks),
            Growth(before.runtime.bytes, after.runtime.bytes), Growth(before.gdiObjects, after.gdiObjects)};
}

void ShowTextField() {
    std::thread([] {
        const UniqueWindow parent = MakeParent();
        UseTextField(parent.Get());
    }).join();
}

void ShowUnheardChoosers(std::size_t choosers, std::size_t entries) {
    std::thread([=] {
        const UniqueWindow parent = MakeParent();
        for (std::size_t i = 0; i < choosers; ++i) {
            MakeUnheardChooser(parent.Get(), entries / choosers + (i < entries % choosers ? 1 : 0));
        }
        UseTextField(parent.Get());
    }).join();
}

}  // namespace kvn::test

#include "bench/property_sheet.h"

#include <shobjidl.h>

#include <chrono>
#include <thread>

#include "platform/com_pointer.h"
#include "resources/resource.h"
#include "resources/server_class.h"
#include "tests/support/owning_types.h"

namespace kvn::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr WPARAM kFirstKey = VK_TAB;

std::size_t messages = 0;

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

BOOL CALLBACK TakePage(HPROPSHEETPAGE page, LPARAM taken) {
    *reinterpret_cast<HPROPSHEETPAGE*>(taken) = page;
    return TRUE;
}

HWND ShowSheet(PageMaker makePage) {
    HPROPSHEETPAGE page = makePage();
    PROPSHEETHEADERW header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_MODELESS;
    header.pszCaption = L"Bench";
    header.nPages = 1;
    header.phpage = &page;
    return reinterpret_cast<HWND>(PropertySheetW(&header));
}

HWND PageOf(HWND sheet) {
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

void Handle(HWND sheet, MSG& message) {
    if (SendMessageW(sheet, PSM_ISDIALOGMESSAGE, 0, reinterpret_cast<LPARAM>(&message)) != FALSE) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

// Handles the thread's messages until none is left.
void RunUntilIdle(HWND sheet, Clock::time_point start, OpeningTimes& times) {
    const HWND page = PageOf(sheet);
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        Handle(sheet, message);
        const bool isKey = message.message == WM_KEYDOWN && message.wParam == kFirstKey;
        const bool isPaint = message.message == WM_PAINT && message.hwnd == page;
        if (isKey && times.firstInput == 0) times.firstInput = MillisecondsSince(start);
        if (isPaint && times.firstPaint == 0) times.firstPaint = MillisecondsSince(start);
    }
    times.idle = MillisecondsSince(start);
}

OpeningTimes RunSheet(PageMaker makePage, const SheetWork& work) {
    OpeningTimes times;
    if (work.before) work.before();
    const auto start = Clock::now();
    const test::UniqueWindow sheet(ShowSheet(makePage));
    const HWND focus = GetFocus();
    PostMessageW(focus == nullptr ? sheet.Get() : focus, WM_KEYDOWN, kFirstKey, 0);
    RunUntilIdle(sheet.Get(), start, times);
    if (work.whenOpen) work.whenOpen(sheet.Get());
    return times;
}

LRESULT CALLBACK CountMessage(int code, WPARAM wParam, LPARAM lParam) {
    if (code >= 0) ++messages;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

}  // namespace

OpeningTimes OpenSheet(PageMaker makePage, const SheetWork& work) {
    OpeningTimes times;
    // The page's combo boxes post WM_QUIT when they are destroyed, so each sheet has its own thread.
    std::thread([&] {
        const platform::ComApartment apartment;
        times = RunSheet(makePage, work);
    }).join();
    return times;
}

HPROPSHEETPAGE OurPage() {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClassObject =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(PageModule(), "DllGetClassObject")));
    platform::ComPointer<IClassFactory> factory;
    platform::ComPointer<IShellPropSheetExt> extension;
    if (FAILED(getClassObject(resources::kServerClassId, IID_IClassFactory,
                              reinterpret_cast<void**>(factory.Receive()))) ||
        FAILED(factory.Get()->CreateInstance(nullptr, IID_IShellPropSheetExt,
                                             reinterpret_cast<void**>(extension.Receive())))) {
        return nullptr;
    }
    HPROPSHEETPAGE page = nullptr;
    extension.Get()->AddPages(TakePage, reinterpret_cast<LPARAM>(&page));
    return page;
}

HMODULE PageModule() {
    static const HMODULE module = LoadLibraryW(L"KvnMouseUtil.dll");
    return module;
}

void Apply(HWND sheet) {
    SendMessageW(sheet, PSM_APPLY, 0, 0);
}

HWND ButtonPaneOf(HWND sheet) {
    const HWND page = PageOf(sheet);
    HWND child = GetWindow(page, GW_CHILD);
    while (child != nullptr && GetDlgItem(child, IDC_PANE_PICTURE) == nullptr) child = GetWindow(child, GW_HWNDNEXT);
    return child;
}

MessageCount::MessageCount() : hook(SetWindowsHookExW(WH_CALLWNDPROC, CountMessage, nullptr, GetCurrentThreadId())) {
    messages = 0;
}

std::size_t MessageCount::Count() {
    return messages;
}

}  // namespace kvn::bench

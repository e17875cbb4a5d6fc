#include <windows.h>

#include <commctrl.h>
#include <prsht.h>
#include <shobjidl.h>

#include <cstdio>
#include <thread>

#include "bench/benches.h"
#include "bench/running_service.h"
#include "bench/stopwatch.h"
#include "page/server_class.h"
#include "platform/subclass.h"
#include "resources/resource.h"

namespace kvn::bench {
namespace {

constexpr int kRounds = 25;
constexpr double kLimit = 1.5;

HMODULE pageModule = nullptr;

BOOL CALLBACK TakePage(HPROPSHEETPAGE page, LPARAM taken) {
    *reinterpret_cast<HPROPSHEETPAGE*>(taken) = page;
    return TRUE;
}

HPROPSHEETPAGE OurPage() {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClassObject =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(pageModule, "DllGetClassObject")));
    IClassFactory* factory = nullptr;
    IShellPropSheetExt* extension = nullptr;
    HPROPSHEETPAGE page = nullptr;
    if (FAILED(getClassObject(page::kServerClassId, IID_IClassFactory, reinterpret_cast<void**>(&factory))))
        return nullptr;
    if (SUCCEEDED(factory->CreateInstance(nullptr, IID_IShellPropSheetExt, reinterpret_cast<void**>(&extension)))) {
        extension->AddPages(TakePage, reinterpret_cast<LPARAM>(&page));
        extension->Release();
    }
    factory->Release();
    return page;
}

// The windows of the page without anything in them: the same templates, two tabs, the panes in their places.
INT_PTR CALLBACK EmptyPageProcedure(HWND page, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (message != WM_INITDIALOG) return FALSE;
    const HWND tab = GetDlgItem(page, IDC_PAGE_TAB);
    for (const wchar_t* title : {L"Allocate button function", L"Allocate gesture function"}) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(title);
        SendMessageW(tab, TCM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    RECT area{};
    GetClientRect(tab, &area);
    SendMessageW(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    MapWindowPoints(tab, page, reinterpret_cast<POINT*>(&area), 2);
    for (const int pane : {IDD_GESTURE_PANE, IDD_BUTTON_PANE}) {
        const HWND window = CreateDialogParamW(pageModule, MAKEINTRESOURCEW(pane), page, platform::IgnoreMessage, 0);
        SetWindowPos(window, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top, 0);
        if (pane == IDD_BUTTON_PANE) ShowWindow(window, SW_SHOW);
    }
    return TRUE;
}

HPROPSHEETPAGE EmptyPage() {
    PROPSHEETPAGEW page{};
    page.dwSize = sizeof(PROPSHEETPAGEW_V2);
    page.hInstance = pageModule;
    page.pszTemplate = L"KorvenMouseUtil";
    page.pfnDlgProc = EmptyPageProcedure;
    return CreatePropertySheetPageW(&page);
}

void PumpUntilIdle() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// The milliseconds from asking for the page to the sheet that is painted and idle.
double OpenSheet(HPROPSHEETPAGE (*makePage)()) {
    double milliseconds = 0;
    // The page's combo boxes post WM_QUIT when they go: each sheet has a thread of its own.
    std::thread([&] {
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        HWND sheet = nullptr;
        milliseconds = Measure([&] {
            HPROPSHEETPAGE page = makePage();
            PROPSHEETHEADERW header{};
            header.dwSize = sizeof header;
            header.dwFlags = PSH_MODELESS;
            header.pszCaption = L"Bench";
            header.nPages = 1;
            header.phpage = &page;
            sheet = reinterpret_cast<HWND>(PropertySheetW(&header));
            UpdateWindow(sheet);
            PumpUntilIdle();
        });
        DestroyWindow(sheet);
        PumpUntilIdle();
        CoUninitialize();
    }).join();
    return milliseconds;
}

}  // namespace

void BenchOpenPage() {
    const RunningService service;
    pageModule = LoadLibraryW(L"KvnMouseUtil.dll");
    if (!service.Runs() || pageModule == nullptr) {
        std::printf("open the page: the service or the DLL is not there\n");
        return;
    }
    OpenSheet(OurPage);
    Print(Compare(
        "open the page", "the same sheet with an empty page", kLimit, kRounds, [] { return OpenSheet(OurPage); },
        [] { return OpenSheet(EmptyPage); }));
}

}  // namespace kvn::bench

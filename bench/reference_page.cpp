#include "bench/reference_page.h"

#include <commctrl.h>
#include <objidl.h>
#include <tinyxml.h>

#include <gdiplus.h>

#include <array>
#include <cstdio>
#include <string>

#include "bench/property_sheet.h"
#include "bench/stored_profiles.h"
#include "model/function_catalogue.h"
#include "platform/service_messages.h"
#include "platform/subclass.h"
#include "platform/texts.h"
#include "platform/unique_resource.h"
#include "platform/window_program.h"
#include "resources/resource.h"

namespace kvn::bench {
namespace {

constexpr std::array kChoosers{IDC_PANE_LEFT,    IDC_PANE_RIGHT,     IDC_PANE_CENTER,    IDC_PANE_BUTTON4,
                               IDC_PANE_BUTTON5, IDC_PANE_TILT_LEFT, IDC_PANE_TILT_RIGHT};
constexpr std::array kTrackbars{IDC_PANE_HORIZONTAL_SPEED, IDC_PANE_FLYING_SPEED, IDC_PANE_REVOLUTION_SPEED};
constexpr DWORD kLongestProgram = 540;
constexpr wchar_t kPicture[] = L"MouseImage\\KvnSample.png";
constexpr Gdiplus::ARGB kGround = 0xFFF0F0F0;

void AddTabs(HWND tab) {
    for (const wchar_t* title : {L"Allocate button function", L"Allocate gesture function"}) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(title);
        SendMessageW(tab, TCM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

// Makes both panes, and returns the visible one, with the buttons.
HWND MakePanes(HWND page) {
    const HWND tab = GetDlgItem(page, IDC_PAGE_TAB);
    AddTabs(tab);
    RECT area{};
    GetClientRect(tab, &area);
    SendMessageW(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    MapWindowPoints(tab, page, reinterpret_cast<POINT*>(&area), 2);
    HWND made = nullptr;
    for (const int pane : {IDD_GESTURE_PANE, IDD_BUTTON_PANE}) {
        made = CreateDialogParamW(PageModule(), MAKEINTRESOURCEW(pane), page, platform::IgnoreMessage, 0);
        SetWindowPos(made, HWND_TOP, area.left, area.top, area.right - area.left, area.bottom - area.top, 0);
    }
    ShowWindow(made, SW_SHOW);
    return made;
}

void ParseProfiles(HWND combo) {
    TiXmlDocument document;
    platform::Owned<FILE*, &std::fclose> file(_wfopen(SampleProfileFile().c_str(), L"rb"));
    if (!file) return;
    document.LoadFile(file.Get(), TIXML_ENCODING_LEGACY);
    file.Reset();
    SendMessageW(combo, WM_SETREDRAW, FALSE, 0);
    const TiXmlElement* const root = document.RootElement();
    const TiXmlElement* profile = root == nullptr ? nullptr : root->FirstChildElement("profile");
    for (; profile != nullptr; profile = profile->NextSiblingElement("profile")) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"Profile"));
    }
    SendMessageW(combo, WM_SETREDRAW, TRUE, 0);
    SendMessageW(combo, CB_SETCURSEL, 0, 0);
}

void FillChoosers(HWND pane) {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
    const auto functions = model::FunctionsForSlot({version.dwMajorVersion, version.dwMinorVersion}, true);
    for (const int control : kChoosers) {
        const HWND combo = GetDlgItem(pane, control);
        SendMessageW(combo, WM_SETREDRAW, FALSE, 0);
        for (const model::CatalogueRow& row : functions) {
            const std::wstring text = platform::LoadText(PageModule(), row.textId);
            const LRESULT index = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
            SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(index), row.code);
        }
        SendMessageW(combo, WM_SETREDRAW, TRUE, 0);
        SendMessageW(combo, CB_SETCURSEL, 0, 0);
    }
}

void ShowPicture(HWND target) {
    const std::wstring program = platform::ProgramOfWindow(platform::FindService(), kLongestProgram);
    const std::wstring file = program.substr(0, program.find(platform::kServiceName)) + kPicture;
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) return;
    RECT area{};
    GetClientRect(target, &area);
    HBITMAP bitmap = nullptr;
    {
        Gdiplus::Bitmap image(file.c_str());
        Gdiplus::Bitmap canvas(area.right, area.bottom, PixelFormat32bppARGB);
        Gdiplus::Graphics graphics(&canvas);
        graphics.Clear(Gdiplus::Color(kGround));
        graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
        graphics.DrawImage(&image, 0, 0, static_cast<INT>(area.right), static_cast<INT>(area.bottom));
        canvas.GetHBITMAP(Gdiplus::Color(kGround), &bitmap);
    }
    Gdiplus::GdiplusShutdown(token);
    SendMessageW(target, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
}

void ReadControls(HWND pane) {
    const auto readCombo = [pane](int control) {
        const LRESULT index = SendDlgItemMessageW(pane, control, CB_GETCURSEL, 0, 0);
        SendDlgItemMessageW(pane, control, CB_GETITEMDATA, static_cast<WPARAM>(index), 0);
    };
    for (const int control : kChoosers) readCombo(control);
    for (const int control : kTrackbars) SendDlgItemMessageW(pane, control, TBM_GETPOS, 0, 0);
    readCombo(IDC_PANE_REVOLUTION_COUNT);
}

INT_PTR CALLBACK EmptyProcedure(HWND page, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    if (message != WM_INITDIALOG) return FALSE;
    MakePanes(page);
    return TRUE;
}

INT_PTR CALLBACK BareProcedure(HWND page, UINT message, WPARAM /*wParam*/, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        const HWND pane = MakePanes(page);
        SetWindowLongPtrW(page, DWLP_USER, reinterpret_cast<LONG_PTR>(pane));
        ParseProfiles(GetDlgItem(page, IDC_PAGE_PROFILE));
        FillChoosers(pane);
        ShowPicture(GetDlgItem(pane, IDC_PANE_PICTURE));
        return TRUE;
    }
    const bool isApply = message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lParam)->code == PSN_APPLY;
    if (isApply) ReadControls(reinterpret_cast<HWND>(GetWindowLongPtrW(page, DWLP_USER)));
    return FALSE;
}

HPROPSHEETPAGE PageWith(DLGPROC procedure) {
    PROPSHEETPAGEW page{};
    page.dwSize = sizeof(PROPSHEETPAGEW_V2);
    page.hInstance = PageModule();
    page.pszTemplate = L"KorvenMouseUtil";
    page.pfnDlgProc = procedure;
    return CreatePropertySheetPageW(&page);
}

}  // namespace

HPROPSHEETPAGE EmptyPage() {
    return PageWith(EmptyProcedure);
}

HPROPSHEETPAGE BarePage() {
    return PageWith(BareProcedure);
}

}  // namespace kvn::bench

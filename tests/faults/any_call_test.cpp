// Calls of Windows functions that fail, one after another, while a user goes through the whole page.
#include <windows.h>

#include <commctrl.h>
#include <objbase.h>
#include <objidl.h>
#include <psapi.h>
#include <shellapi.h>

#include <gdiplus.h>

#include <memory>
#include <ostream>

#include "tests/faults/failed_call.h"
#include "tests/faults/whole_page_fixture.h"

namespace kvn::test {
namespace {

namespace gdi = Gdiplus::DllExports;

struct FaultRow {
    const char* name;
    FailingImport import;

    friend std::ostream& operator<<(std::ostream& out, const FaultRow& row) { return out << row.name; }
};

class AnyCallTest : public WholePageTest, public testing::WithParamInterface<FaultRow> {};

TEST_P(AnyCallTest, ThatFailsHarmsNoSavedSettings) {
    const Saved whole = StateAfterTour();
    FailedCall call;
    const auto import = GetParam().import(module.Handle(), call);
    ASSERT_NE(import, nullptr) << "not imported";
    for (int number = 1; number == 1 || call.WasReached(); ++number) {
        SCOPED_TRACE(number);
        StartOver();
        call = {number};
        const bool isApplied = GoThroughThePage();
        const FailedCall during = call;
        ExpectNoDamage();
        call = {};
        EXPECT_TRUE(isApplied || page.Apply());
        EXPECT_NE(State().file.find("<profname>Second</profname>"), std::string::npos);
        EXPECT_NE(State().file.find("C:\\windows\\notepad.exe"), std::string::npos);
        CloseAndExpectNoLeak();
        if (HasFailure()) break;
        call = during;
        EXPECT_TRUE(number > 1 || call.WasReached()) << "never called";
    }
    call = {};
    ExpectWholeTour(whole);
}

// The folder of the user's settings is still found: without it the file would go to the root of the current drive.
std::shared_ptr<void> FailToFindStartMenu(HMODULE module, FailedCall& call) {
    const auto standIn = [&call](HWND owner, int folder, LPITEMIDLIST* items) -> HRESULT {
        if (folder != CSIDL_APPDATA && call.Fails()) return E_FAIL;
        return SHGetSpecialFolderLocation(owner, folder, items);
    };
    using Import = ReplacedImport<"SHGetSpecialFolderLocation", decltype(SHGetSpecialFolderLocation)>;
    auto import = std::make_shared<Import>(module, standIn);
    return import->IsInPlace() ? import : nullptr;
}

INSTANTIATE_TEST_SUITE_P(
    OfWindows, AnyCallTest,
    testing::Values(
        FaultRow{"GdipDrawImageRectI",
                 FailingWith<"GdipDrawImageRectI">(gdi::GdipDrawImageRectI, Gdiplus::Status::OutOfMemory)},
        FaultRow{"GdipGraphicsClear",
                 FailingWith<"GdipGraphicsClear">(gdi::GdipGraphicsClear, Gdiplus::Status::OutOfMemory)},
        FaultRow{"GdipSetInterpolationMode",
                 FailingWith<"GdipSetInterpolationMode">(gdi::GdipSetInterpolationMode, Gdiplus::Status::OutOfMemory)},
        FaultRow{"SetLayeredWindowAttributes",
                 FailingWith<"SetLayeredWindowAttributes">(SetLayeredWindowAttributes, WINBOOL{FALSE})},
        FaultRow{"EnumWindows", FailingWith<"EnumWindows">(EnumWindows, WINBOOL{FALSE})},
        FaultRow{"GetStockObject", FailingWith<"GetStockObject">(GetStockObject, HGDIOBJ{})},
        FaultRow{"SelectObject", FailingWith<"SelectObject">(SelectObject, HGDIOBJ{})},
        FaultRow{"FindNextFileW", FailingWith<"FindNextFileW">(FindNextFileW, WINBOOL{FALSE})},
        FaultRow{"GetClassNameW", FailingWith<"GetClassNameW">(GetClassNameW, 0)},
        FaultRow{"SetWindowPos", FailingWith<"SetWindowPos">(SetWindowPos, WINBOOL{FALSE})},
        FaultRow{"MapWindowPoints", FailingWith<"MapWindowPoints">(MapWindowPoints, 0)},
        FaultRow{"SHGetSpecialFolderLocation", &FailToFindStartMenu},
        FaultRow{"CreateDialogParamW", FailingWith<"CreateDialogParamW">(CreateDialogParamW, HWND{})},
        FaultRow{"SetTimer", FailingWith<"SetTimer">(SetTimer, UINT_PTR{0})},
        FaultRow{"GetDC", FailingWith<"GetDC">(GetDC, HDC{})},
        FaultRow{"CreatePen", FailingWith<"CreatePen">(CreatePen, HPEN{})},
        FaultRow{"CreateSolidBrush", FailingWith<"CreateSolidBrush">(CreateSolidBrush, HBRUSH{})},
        FaultRow{"GetCursorPos", FailingWith<"GetCursorPos">(GetCursorPos, WINBOOL{FALSE})},
        FaultRow{"GetComboBoxInfo", FailingWith<"GetComboBoxInfo">(GetComboBoxInfo, WINBOOL{FALSE})},
        FaultRow{"GetClientRect", FailingWith<"GetClientRect">(GetClientRect, WINBOOL{FALSE})},
        FaultRow{"ImageList_Create", FailingWith<"ImageList_Create">(ImageList_Create, HIMAGELIST{})},
        FaultRow{"ImageList_ReplaceIcon", FailingWith<"ImageList_ReplaceIcon">(ImageList_ReplaceIcon, -1)},
        FaultRow{"SHGetFileInfoW", FailingWith<"SHGetFileInfoW">(SHGetFileInfoW, DWORD_PTR{0})},
        FaultRow{"GdiplusStartup",
                 FailingWith<"GdiplusStartup">(Gdiplus::GdiplusStartup, Gdiplus::Status::OutOfMemory)},
        FaultRow{"GdipLoadImageFromFile",
                 FailingWith<"GdipLoadImageFromFile">(gdi::GdipLoadImageFromFile, Gdiplus::Status::OutOfMemory)},
        FaultRow{"GdipCreateBitmapFromScan0", FailingWith<"GdipCreateBitmapFromScan0">(gdi::GdipCreateBitmapFromScan0,
                                                                                       Gdiplus::Status::OutOfMemory)},
        FaultRow{
            "GdipGetImageGraphicsContext",
            FailingWith<"GdipGetImageGraphicsContext">(gdi::GdipGetImageGraphicsContext, Gdiplus::Status::OutOfMemory)},
        FaultRow{
            "GdipCreateHBITMAPFromBitmap",
            FailingWith<"GdipCreateHBITMAPFromBitmap">(gdi::GdipCreateHBITMAPFromBitmap, Gdiplus::Status::OutOfMemory)},
        FaultRow{"CoInitialize", FailingWith<"CoInitialize">(CoInitialize, HRESULT{RPC_E_CHANGED_MODE})},
        FaultRow{"CoCreateInstance", FailingWith<"CoCreateInstance">(CoCreateInstance, HRESULT{E_OUTOFMEMORY})},
        FaultRow{"FindFirstFileW", FailingWith<"FindFirstFileW">(FindFirstFileW, HANDLE{INVALID_HANDLE_VALUE})},
        FaultRow{"OpenProcess", FailingWith<"OpenProcess">(OpenProcess, HANDLE{})},
        FaultRow{"EnumProcessModules", FailingWith<"EnumProcessModules">(EnumProcessModules, WINBOOL{FALSE})},
        FaultRow{"GetWindowThreadProcessId",
                 FailingWith<"GetWindowThreadProcessId">(GetWindowThreadProcessId, DWORD{0})}),
    [](const testing::TestParamInfo<FaultRow>& tested) { return tested.param.name; });

}  // namespace
}  // namespace kvn::test

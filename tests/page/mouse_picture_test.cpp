// The pictures of the mouse: which files are loaded, and what the picture control shows.
#include <windows.h>

#include <commctrl.h>
#include <objidl.h>
#include <psapi.h>

#include <algorithm>
#include <filesystem>
#include <set>
// GDI+'s headers use min and max unqualified.
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include "tests/support/owning_types.h"
#include "tests/support/page_fixture.h"
#include "tests/support/written_picture.h"

namespace kvn::test {
namespace {

namespace gdi = Gdiplus::DllExports;

// A different colour for each picture.
constexpr COLORREF ColourOf(int picture) {
    return RGB(picture * 30, 255 - picture * 30, 17);
}

Gdiplus::ARGB ToArgb(COLORREF colour) {
    return Gdiplus::Color::MakeARGB(255, GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

class MousePictureTest : public PageTest {
protected:
    MousePictureTest() { std::filesystem::create_directories(pictures); }

    void WritePictures(const std::vector<int>& indices) const {
        for (const int k : indices) WritePng(FileOf(k), ToArgb(ColourOf(k)));
    }
    std::filesystem::path FileOf(int picture) const {
        return pictures / (mouse.image + (picture == 0 ? L"" : L"_" + std::to_wstring(picture)) + L".png");
    }

    // The colour in the middle of the shown bitmap; CLR_INVALID if there is none.
    COLORREF ShownColour() const {
        COLORREF colour = CLR_INVALID;
        sheet->Run([&, control = sheet->PaneControl(IDC_PANE_PICTURE)] {
            const auto bitmap = reinterpret_cast<HBITMAP>(SendMessageW(control, STM_GETIMAGE, IMAGE_BITMAP, 0));
            BITMAP info{};
            if (bitmap == nullptr || GetObjectW(bitmap, sizeof info, &info) == 0) return;
            const UniqueMemoryContext context(CreateCompatibleDC(nullptr));
            const HGDIOBJ previous = SelectObject(context.Get(), bitmap);
            colour = GetPixel(context.Get(), info.bmWidth / 2, info.bmHeight / 2);
            SelectObject(context.Get(), previous);
        });
        return colour;
    }

    // Every file that the page opens when each control of the mouse is marked in turn, in order.
    std::vector<std::wstring> LoadedFiles() {
        std::vector<std::wstring> files;
        const ReplacedImport<"GdipLoadImageFromFile", Gdiplus::GpStatus(const WCHAR*, Gdiplus::GpImage**)> load(
            module.Handle(), [&](const WCHAR* file, Gdiplus::GpImage** image) {
                files.emplace_back(file);
                return gdi::GdipLoadImageFromFile(file, image);
            });
        Open();
        // A disabled chooser cannot have the focus, but its picture still belongs to the model.
        for (const int control : kSlotControls) SendMessageW(sheet->PaneControl(control), WM_SETFOCUS, 0, 0);
        Close();
        return files;
    }
    std::vector<std::wstring> FilesUpTo(int last) const {
        std::vector<std::wstring> files;
        for (int k = 0; k <= last; ++k) files.push_back(FileOf(k).wstring());
        return files;
    }

    std::wstring serviceFolder = user.ApplicationData() + L"\\";
    std::filesystem::path pictures = serviceFolder + L"MouseImage";
    std::wstring program = serviceFolder + L"KvnMouseApl.exe";
    ReplacedImport<"GetModuleFileNameExW", decltype(GetModuleFileNameExW)> fileName{
        module.Handle(), [this](HANDLE, HMODULE, LPWSTR buffer, DWORD size) {
            lstrcpynW(buffer, program.c_str(), static_cast<int>(size));
            return static_cast<DWORD>(program.size());
        }};
};

TEST_F(MousePictureTest, ModelWithTiltHasEightPictures) {
    mouse.buttonCount = 3;
    EXPECT_EQ(LoadedFiles(), FilesUpTo(7));
}

TEST_F(MousePictureTest, ModelWithoutTiltHasOneMoreThanButtons) {
    mouse.hasTilt = 0;
    for (const DWORD buttons : {0UL, 3UL, 7UL}) {
        mouse.buttonCount = buttons;
        EXPECT_EQ(LoadedFiles(), FilesUpTo(static_cast<int>(buttons)));
    }
}

TEST_F(MousePictureTest, FilesAreNamedAfterTheModelsPicture) {
    mouse.hasTilt = 0;
    mouse.buttonCount = 1;
    mouse.image = L"Mouse \u00E4 7";
    EXPECT_EQ(LoadedFiles(), (std::vector<std::wstring>{serviceFolder + L"MouseImage\\Mouse \u00E4 7.png",
                                                        serviceFolder + L"MouseImage\\Mouse \u00E4 7_1.png"}));
}

TEST_F(MousePictureTest, FocusMarksTheControlInThePicture) {
    WritePictures({0, 1, 2, 3, 4, 5, 6, 7});
    Open();
    SetFocusTo(sheet->PageControl(IDC_PAGE_PROFILE));
    EXPECT_EQ(ShownColour(), ColourOf(0));
    for (int slot = 0; slot < 7; ++slot) {
        SetFocusTo(sheet->PaneControl(kSlotControls[slot]));
        EXPECT_EQ(ShownColour(), ColourOf(slot + 1)) << slot;
    }
    SetFocusTo(sheet->PaneControl(IDC_PANE_HELP));
    EXPECT_EQ(ShownColour(), ColourOf(0));
}

TEST_F(MousePictureTest, FillsThePictureControl) {
    WritePictures({0});
    Open();
    const HWND control = sheet->PaneControl(IDC_PANE_PICTURE);
    RECT area{};
    GetClientRect(control, &area);
    BITMAP info{};
    sheet->Run([&] {
        const LRESULT bitmap = SendMessageW(control, STM_GETIMAGE, IMAGE_BITMAP, 0);
        GetObjectW(reinterpret_cast<HBITMAP>(bitmap), sizeof info, &info);
    });
    EXPECT_EQ(info.bmWidth, area.right);
    EXPECT_EQ(info.bmHeight, area.bottom);
    EXPECT_EQ(info.bmBitsPixel, 32);
}

TEST_F(MousePictureTest, MissingPictureIsTheColourOfDialogs) {
    WritePictures({0, 2});
    Open();
    SetFocusTo(sheet->PaneControl(IDC_PANE_LEFT));
    EXPECT_EQ(ShownColour(), GetSysColor(COLOR_BTNFACE));
    SetFocusTo(sheet->PaneControl(IDC_PANE_RIGHT));
    EXPECT_EQ(ShownColour(), ColourOf(2));
}

TEST_F(MousePictureTest, TransparentPartsShowTheColourOfDialogs) {
    WritePng(FileOf(0), Gdiplus::Color::MakeARGB(0, 255, 0, 0));
    Open();
    SetFocusTo(sheet->PageControl(IDC_PAGE_PROFILE));
    EXPECT_EQ(ShownColour(), GetSysColor(COLOR_BTNFACE));
}

TEST_F(MousePictureTest, BrokenPictureIsTheColourOfDialogs) {
    WriteFileText(FileOf(0).wstring(), "no picture");
    Open();
    SetFocusTo(sheet->PageControl(IDC_PAGE_PROFILE));
    EXPECT_EQ(ShownColour(), GetSysColor(COLOR_BTNFACE));
}

TEST_F(MousePictureTest, EachFileIsLoadedOnce) {
    std::vector<std::wstring> files;
    const ReplacedImport<"GdipLoadImageFromFile", Gdiplus::GpStatus(const WCHAR*, Gdiplus::GpImage**)> load(
        module.Handle(), [&](const WCHAR* file, Gdiplus::GpImage** image) {
            files.emplace_back(file);
            return gdi::GdipLoadImageFromFile(file, image);
        });
    WritePictures({0, 1});
    Open();
    for (int round = 0; round < 3; ++round) {
        SetFocusTo(sheet->PaneControl(IDC_PANE_LEFT));
        SetFocusTo(sheet->PaneControl(IDC_PANE_RIGHT));
        SetFocusTo(sheet->PageControl(IDC_PAGE_PROFILE));
    }
    EXPECT_EQ(files, FilesUpTo(2));
}

TEST_F(MousePictureTest, UnknownServiceFolderShowsNoPictures) {
    program = L"C:\\elsewhere.exe";
    wchar_t before[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, before);
    WritePng(user.ApplicationData() + L"\\" + mouse.image + L".png", ToArgb(ColourOf(3)));
    SetCurrentDirectoryW(user.ApplicationData().c_str());
    Open();
    SetFocusTo(sheet->PageControl(IDC_PAGE_PROFILE));
    EXPECT_EQ(ShownColour(), CLR_INVALID);
    SetCurrentDirectoryW(before);
}

TEST_F(MousePictureTest, AllPicturesShareOneStartOfGdiplus) {
    int running = 0;
    int started = 0;
    const ReplacedImport<"GdiplusStartup", Gdiplus::Status(ULONG_PTR*, const Gdiplus::GdiplusStartupInput*,
                                                           Gdiplus::GdiplusStartupOutput*)>
        startup(module.Handle(), [&](ULONG_PTR* token, const Gdiplus::GdiplusStartupInput* input,
                                     Gdiplus::GdiplusStartupOutput* output) {
            ++running;
            ++started;
            return Gdiplus::GdiplusStartup(token, input, output);
        });
    const ReplacedImport<"GdiplusShutdown", void(ULONG_PTR)> shutdown(module.Handle(), [&](ULONG_PTR token) {
        --running;
        Gdiplus::GdiplusShutdown(token);
    });
    Open();
    EXPECT_EQ(started, 1);
    EXPECT_EQ(running, 1);
    Close();
    EXPECT_EQ(running, 0);
}

TEST_F(MousePictureTest, BitmapsAreDeletedWhenTheyAreReplacedAndAtTheEnd) {
    int made = 0;
    int deleted = 0;
    const ReplacedImport<"GdipCreateHBITMAPFromBitmap", Gdiplus::GpStatus(Gdiplus::GpBitmap*, HBITMAP*, Gdiplus::ARGB)>
        make(module.Handle(), [&](Gdiplus::GpBitmap* bitmap, HBITMAP* handle, Gdiplus::ARGB background) {
            ++made;
            EXPECT_EQ(background, 0xFF000000U);
            return gdi::GdipCreateHBITMAPFromBitmap(bitmap, handle, background);
        });
    const ReplacedImport<"DeleteObject", decltype(DeleteObject)> destroy(module.Handle(), [&](HGDIOBJ object) {
        ++deleted;
        return DeleteObject(object);
    });
    Open();
    for (const int control : kSlotControls) SetFocusTo(sheet->PaneControl(control));
    EXPECT_GE(made, 8);
    Close();
    EXPECT_EQ(deleted, made);
}

// Behaves like version 6 of the picture control with a bitmap that has an alpha channel.
TEST_F(MousePictureTest, BitmapsAreDeletedWhenTheControlShowsACopy) {
    std::set<HGDIOBJ> alive;
    int copies = 0;
    const ReplacedImport<"GdipCreateHBITMAPFromBitmap", Gdiplus::GpStatus(Gdiplus::GpBitmap*, HBITMAP*, Gdiplus::ARGB)>
        make(module.Handle(), [&](Gdiplus::GpBitmap* bitmap, HBITMAP* handle, Gdiplus::ARGB background) {
            const auto status = gdi::GdipCreateHBITMAPFromBitmap(bitmap, handle, background);
            alive.insert(*handle);
            return status;
        });
    const ReplacedImport<"SendMessageW", decltype(SendMessageW)> send(
        module.Handle(), [&](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message != STM_SETIMAGE || lParam == 0) return SendMessageW(window, message, wParam, lParam);
            const HANDLE copy = CopyImage(reinterpret_cast<HANDLE>(lParam), IMAGE_BITMAP, 0, 0, 0);
            alive.insert(copy);
            ++copies;
            return SendMessageW(window, message, wParam, reinterpret_cast<LPARAM>(copy));
        });
    const ReplacedImport<"DeleteObject", decltype(DeleteObject)> destroy(module.Handle(), [&](HGDIOBJ object) {
        alive.erase(object);
        return DeleteObject(object);
    });
    ASSERT_TRUE(make.IsInPlace() && send.IsInPlace() && destroy.IsInPlace());
    Open();
    for (const int control : kSlotControls) SetFocusTo(sheet->PaneControl(control));
    EXPECT_GE(copies, 8);
    EXPECT_EQ(alive.size(), 1U) << "only the shown bitmap is left";
    Close();
    EXPECT_TRUE(alive.empty());
}

}  // namespace
}  // namespace kvn::test

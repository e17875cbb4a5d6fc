#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <array>
#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "bench/benches.h"
#include "bench/property_sheet.h"
#include "bench/stopwatch.h"
#include "platform/com_pointer.h"
#include "platform/list_view.h"
#include "profiles/profile_editor.h"
#include "resources/resource.h"

namespace kvn::bench {
namespace {

constexpr std::size_t kProfiles = 100;
constexpr std::size_t kQuickProfiles = 5;
constexpr std::size_t kPrograms = 100;
constexpr int kOpeningRounds = 25;
constexpr int kSelectingRounds = 1;  // of 10,000 icons on each side, some twenty seconds
constexpr double kLimit = 1.5;
constexpr int kIconSize = 16;
constexpr std::array<platform::ListColumn, 1> kProfileColumns{{{IDS_COLUMN_PROFILE, 380}}};
constexpr std::array<platform::ListColumn, 2> kProgramColumns{
    {{IDS_COLUMN_FILE_NAME, 150}, {IDS_COLUMN_LOCATION, 230}}};
constexpr std::array<const wchar_t*, 5> kFiles{L"notepad.exe", L"explorer.exe", L"regedit.exe", L"system32\\cmd.exe",
                                               L"system32\\winecfg.exe"};

// Takes the place of the page, and shows nothing.
class NoDisplay : public profiles::IProfileDisplay {
public:
    void ShowProfiles() override {}
    void ShowSelectedProfile() override {}
};

model::MouseSettings ManyProfiles() {
    std::array<wchar_t, MAX_PATH> windows{};
    GetWindowsDirectoryW(windows.data(), MAX_PATH);
    model::MouseSettings settings;
    for (std::size_t i = 0; i < kProfiles; ++i) {
        model::ProfileRecord record = model::DefaultProfileRecord();
        record.name = L"Profile " + std::to_wstring(i);
        for (std::size_t k = 0; k < kPrograms; ++k) {
            record.settings.applications.push_back(
                {L"Program " + std::to_wstring(k), std::wstring(windows.data()) + L'\\' + kFiles[k % kFiles.size()]});
        }
        settings.profiles.push_back(std::move(record));
    }
    return settings;
}

// The window above which the dialogs open. A modal dialog notifies its owner each time it becomes idle; by then it has
// been painted.
class Owner {
public:
    Owner()
        : window(CreateWindowExW(0, WC_STATICW, L"Bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 900, 700, nullptr,
                                 nullptr, nullptr, nullptr)) {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    ~Owner() { DestroyWindow(window); }

    HWND Window() const { return window; }

    // Runs a modal dialog, does the work once the dialog is there, and cancels it.
    void Run(const std::function<void()>& openDialog, const std::function<void(HWND)>& work) {
        onIdle = work;
        openDialog();
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* const owner = reinterpret_cast<Owner*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_ENTERIDLE && owner->onIdle) {
            const auto dialog = reinterpret_cast<HWND>(lParam);
            std::exchange(owner->onIdle, nullptr)(dialog);
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
            return 0;
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND window;
    std::function<void(HWND)> onIdle;
};

// A plain program with the same template. It also works on a copy.
class PlainDialog {
public:
    explicit PlainDialog(const model::MouseSettings& shown) : profiles(shown.profiles) {}
    PlainDialog(const PlainDialog&) = delete;
    PlainDialog& operator=(const PlainDialog&) = delete;
    ~PlainDialog() = default;

    void Run(HWND owner) {
        DialogBoxParamW(PageModule(), MAKEINTRESOURCEW(IDD_EDIT_PROFILE), owner, Procedure,
                        reinterpret_cast<LPARAM>(this));
    }

private:
    static INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
            reinterpret_cast<PlainDialog*>(lParam)->Fill(dialog);
            return TRUE;
        }
        auto* const plain = reinterpret_cast<PlainDialog*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
        if (message == WM_NOTIFY && plain != nullptr) plain->OnNotify(*reinterpret_cast<const NMLISTVIEW*>(lParam));
        return message == WM_COMMAND && LOWORD(wParam) == IDCANCEL && EndDialog(dialog, IDCANCEL) ? TRUE : FALSE;
    }

    void Fill(HWND dialog) {
        const HWND profileList = GetDlgItem(dialog, IDC_PROFILES_LIST);
        programList = GetDlgItem(dialog, IDC_PROFILES_PROGRAMS);
        for (const HWND list : {profileList, programList}) platform::SelectFullRows(list);
        platform::AddListColumns(profileList, PageModule(), kProfileColumns);
        platform::AddListColumns(programList, PageModule(), kProgramColumns);
        icons.Reset(ImageList_Create(kIconSize, kIconSize, ILC_COLORDDB, 5, 0));
        ListView_SetImageList(programList, icons.Get(), LVSIL_SMALL);
        SetWindowLongPtrW(programList, GWL_STYLE, GetWindowLongPtrW(programList, GWL_STYLE) | LVS_SHAREIMAGELISTS);
        SendMessageW(profileList, WM_SETREDRAW, FALSE, 0);
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        for (const model::ProfileRecord& profile : profiles) {
            item.pszText = const_cast<wchar_t*>(profile.name.c_str());
            SendMessageW(profileList, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
            ++item.iItem;
        }
        SendMessageW(profileList, WM_SETREDRAW, TRUE, 0);
    }

    void OnNotify(const NMLISTVIEW& change) const {
        if (change.hdr.idFrom != IDC_PROFILES_LIST || change.hdr.code != LVN_ITEMCHANGED) return;
        if ((change.uNewState & LVIS_SELECTED) != 0) ShowPrograms(profiles[static_cast<std::size_t>(change.iItem)]);
    }

    void ShowPrograms(const model::ProfileRecord& profile) const {
        SendMessageW(programList, WM_SETREDRAW, FALSE, 0);
        SendMessageW(programList, LVM_DELETEALLITEMS, 0, 0);
        LVITEMW item{};
        for (const model::ApplicationEntry& program : profile.settings.applications) {
            SHFILEINFOW info{};
            SHGetFileInfoW(program.path.c_str(), 0, &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON);
            item.mask = LVIF_TEXT | LVIF_IMAGE;
            item.iSubItem = 0;
            const platform::Owned<HICON, &DestroyIcon> icon(info.hIcon);
            item.iImage = ImageList_ReplaceIcon(icons.Get(), -1, icon.Get());
            item.pszText = const_cast<wchar_t*>(program.name.c_str());
            SendMessageW(programList, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
            item.mask = LVIF_TEXT;
            item.iSubItem = 1;
            item.pszText = const_cast<wchar_t*>(program.path.c_str());
            SendMessageW(programList, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            ++item.iItem;
        }
        SendMessageW(programList, WM_SETREDRAW, TRUE, 0);
    }

    const model::ProfileSet profiles;
    HWND programList = nullptr;
    platform::Owned<HIMAGELIST, &ImageList_Destroy> icons;
};

void SelectProfiles(HWND dialog, std::size_t count) {
    const HWND list = GetDlgItem(dialog, IDC_PROFILES_LIST);
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED;
    for (std::size_t row = 0; row < count; ++row) {
        item.state = 0;
        SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
        item.state = LVIS_SELECTED;
        SendMessageW(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
        UpdateWindow(dialog);
    }
}

using Opener = std::function<void()>;

// The milliseconds from the request for the dialog until it is painted.
double MeasureOpening(Owner& owner, const Opener& open) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    auto end = start;
    owner.Run(open, [&](HWND) { end = Clock::now(); });
    return std::chrono::duration<double, std::milli>(end - start).count();
}

double MeasureSelecting(Owner& owner, const Opener& open, std::size_t count) {
    double milliseconds = 0;
    owner.Run(open, [&](HWND dialog) { milliseconds = Measure([&] { SelectProfiles(dialog, count); }); });
    return milliseconds;
}

}  // namespace

void BenchProfileEditor(Report& report) {
    if (PageModule() == nullptr) return report.AddMissing("the profile editor, without the DLL");
    const platform::ComApartment apartment;
    Owner owner;
    NoDisplay display;
    model::MouseSettings settings = ManyProfiles();
    const platform::MessageBoxes boxes(PageModule(), IDS_CAPTION);
    const Opener ours = [&] {
        profiles::ProfileEditorContext context{PageModule(), owner.Window(), settings, boxes, display};
        profiles::RunProfileEditor(context);
    };
    const Opener theirs = [&] { PlainDialog(settings).Run(owner.Window()); };
    MeasureOpening(owner, ours);
    report.Compare(
        "open the editor of 100 profiles", "a plain dialog with a copy of the same rows", kLimit, kOpeningRounds,
        [&] { return MeasureOpening(owner, ours); }, [&] { return MeasureOpening(owner, theirs); });
    const std::size_t selected = report.IsQuick() ? kQuickProfiles : kProfiles;
    report.Compare(
        "select " + std::to_string(selected) + " of them, of 100 programs",
        "the same rows and icons in plain list views", kLimit, kSelectingRounds,
        [&] { return MeasureSelecting(owner, ours, selected); },
        [&] { return MeasureSelecting(owner, theirs, selected); });
}

}  // namespace kvn::bench

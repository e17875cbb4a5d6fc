#include "profiles/program_icons.h"

#include <shellapi.h>

#include "platform/list_view.h"

namespace kvn::profiles {
namespace {

constexpr int kIconSize = 16;
constexpr int kInitialCount = 5;
constexpr int kGrowth = 0;
constexpr int kAppend = -1;
constexpr int kNoIcon = -1;
constexpr int kPathColumn = 1;

using UniqueIcon = platform::Owned<HICON, &DestroyIcon>;

UniqueIcon SmallIconOf(const std::wstring& path) {
    // The shell has an icon for the empty path as well, though it names no file.
    if (path.empty()) return {};
    SHFILEINFOW info{};
    if (SHGetFileInfoW(path.c_str(), 0, &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON) == 0) return {};
    return UniqueIcon(info.hIcon);
}

}  // namespace

ProgramIcons::ProgramIcons() : images(ImageList_Create(kIconSize, kIconSize, ILC_COLORDDB, kInitialCount, kGrowth)) {}

void ProgramIcons::AttachTo(HWND list) const {
    SetWindowLongPtrW(list, GWL_STYLE, GetWindowLongPtrW(list, GWL_STYLE) | LVS_SHAREIMAGELISTS);
    // The images have no masks: an icon's transparent parts take the list's background colour.
    ImageList_SetBkColor(images.Get(), static_cast<COLORREF>(SendMessageW(list, LVM_GETBKCOLOR, 0, 0)));
    SendMessageW(list, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images.Get()));
}

int ProgramIcons::Append(const std::wstring& path) {
    const UniqueIcon icon = SmallIconOf(path);
    return icon ? ImageList_ReplaceIcon(images.Get(), kAppend, icon.Get()) : kNoIcon;
}

void InsertProgramRow(HWND list, int row, const model::ApplicationEntry& program, int icon) {
    platform::InsertListRow(list, row, program.name, icon);
    platform::SetListText(list, row, kPathColumn, program.path);
}

}  // namespace kvn::profiles

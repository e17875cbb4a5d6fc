#include "platform/list_view.h"

#include <commctrl.h>

#include <array>

namespace kvn::platform {
namespace {

constexpr int kMaxReadText = 255;

LRESULT Send(HWND list, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(list, message, wParam, lParam);
}

// The common controls take texts to show through pointers to non-const characters, and leave them alone.
wchar_t* Shown(const std::wstring& text) {
    return const_cast<wchar_t*>(text.c_str());
}

}  // namespace

void AddListColumn(HWND list, int index, const std::wstring& title, int width) {
    LVCOLUMNW column{};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
    column.fmt = LVCFMT_LEFT;
    column.cx = width;
    column.pszText = Shown(title);
    column.iSubItem = index;
    Send(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void SelectFullRows(HWND list) {
    Send(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
}

void InsertListRow(HWND list, int row, const std::wstring& text, std::optional<int> image) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = Shown(text);
    if (image) {
        item.mask |= LVIF_IMAGE;
        item.iImage = *image;
    }
    Send(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void SetListText(HWND list, int row, int column, const std::wstring& text) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = Shown(text);
    Send(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

std::wstring ListText(HWND list, int row) {
    std::array<wchar_t, kMaxReadText + 1> text{};
    LVITEMW item{};
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    Send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text.data();
}

int ListRowCount(HWND list) {
    return static_cast<int>(Send(list, LVM_GETITEMCOUNT));
}

int SelectedRowCount(HWND list) {
    return static_cast<int>(Send(list, LVM_GETSELECTEDCOUNT));
}

std::optional<int> FirstSelectedRow(HWND list) {
    // Asked first, since a list that is gone answers 0 to everything.
    if (SelectedRowCount(list) < 1) return std::nullopt;
    const auto row = static_cast<int>(Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (row < 0) return std::nullopt;
    return row;
}

void DeleteListRow(HWND list, int row) {
    Send(list, LVM_DELETEITEM, static_cast<WPARAM>(row));
}

void ClearListRows(HWND list) {
    Send(list, LVM_DELETEALLITEMS);
}

PausedRedraw::PausedRedraw(HWND listView) : list(listView) {
    Send(list, WM_SETREDRAW, FALSE);
}

PausedRedraw::~PausedRedraw() {
    Send(list, WM_SETREDRAW, TRUE);
    if (list != nullptr) InvalidateRect(list, nullptr, TRUE);
}

}  // namespace kvn::platform

#include "platform/list_view.h"

#include <commctrl.h>

#include <utility>

#include "platform/texts.h"
#include "platform/window_text.h"

namespace kvn::platform {
namespace {

LRESULT Send(HWND list, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(list, message, wParam, lParam);
}

// The common controls take texts through pointers to non-const characters, but do not change them.
wchar_t* Shown(const std::wstring& text) {
    return const_cast<wchar_t*>(text.c_str());
}

}  // namespace

void AddListColumns(HWND list, HINSTANCE module, std::span<const ListColumn> columns) {
    int index = 0;
    for (const ListColumn& each : columns) {
        const std::wstring title = LoadText(module, each.titleId);
        LVCOLUMNW column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
        column.fmt = LVCFMT_LEFT;
        column.cx = each.width;
        column.pszText = Shown(title);
        column.iSubItem = index;
        Send(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
        ++index;
    }
}

void SelectFullRows(HWND list) {
    Send(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
}

int InsertListRow(HWND list, int row, const std::wstring& text, std::optional<int> image) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.pszText = Shown(text);
    if (image) {
        item.mask |= LVIF_IMAGE;
        item.iImage = *image;
    }
    return static_cast<int>(Send(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

void SetListText(HWND list, int row, int column, const std::wstring& text) {
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = Shown(text);
    Send(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

std::wstring ListText(HWND list, int row, int column, int maxLength) {
    // Room for one more and the final zero: only a text that is too long is cut.
    std::wstring text(static_cast<std::size_t>(maxLength) + 2, L'\0');
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    Send(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    text.resize(text.find(L'\0'));
    return CutText(std::move(text), maxLength);
}

int ListRowCount(HWND list) {
    return static_cast<int>(Send(list, LVM_GETITEMCOUNT));
}

int SelectedRowCount(HWND list) {
    return static_cast<int>(Send(list, LVM_GETSELECTEDCOUNT));
}

std::vector<int> SelectedRows(HWND list) {
    std::vector<int> rows;
    // The count comes first, since every message to a destroyed list returns 0.
    const int count = SelectedRowCount(list);
    auto row = static_cast<WPARAM>(-1);
    for (int i = 0; i < count; ++i) {
        const LRESULT next = Send(list, LVM_GETNEXTITEM, row, LVNI_SELECTED);
        if (next < 0) break;
        rows.push_back(static_cast<int>(next));
        row = static_cast<WPARAM>(next);
    }
    return rows;
}

std::optional<int> FirstSelectedRow(HWND list) {
    if (SelectedRowCount(list) < 1) return std::nullopt;
    const LRESULT row = Send(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED);
    if (row < 0) return std::nullopt;
    return static_cast<int>(row);
}

void DeleteListRow(HWND list, int row) {
    Send(list, LVM_DELETEITEM, static_cast<WPARAM>(row));
}

void ClearListRows(HWND list) {
    Send(list, LVM_DELETEALLITEMS);
}

}  // namespace kvn::platform

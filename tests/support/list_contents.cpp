#include "tests/support/list_contents.h"

#include <commctrl.h>

#include <array>

#include "tests/support/item_text.h"
#include "tests/support/window_messages.h"

namespace kvn::test {
namespace {

constexpr int kEveryRow = -1;

}  // namespace

std::vector<ListColumn> ColumnsOf(HWND list) {
    std::vector<ListColumn> columns;
    std::array<wchar_t, 64> title{};
    const WindowMemory titleMemory(list, sizeof title);
    const WindowMemory columnMemory(list, sizeof(LVCOLUMNW));
    for (WPARAM index = 0;; ++index) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.pszText = reinterpret_cast<wchar_t*>(titleMemory.Address());
        column.cchTextMax = static_cast<int>(title.size());
        columnMemory.WriteFrom(&column);
        if (Send(list, LVM_GETCOLUMNW, index, columnMemory.Address()) == 0) return columns;
        columnMemory.ReadTo(&column);
        titleMemory.ReadTo(title.data());
        columns.push_back({title.data(), column.cx, column.fmt & LVCFMT_JUSTIFYMASK});
    }
}

int RowCountOf(HWND list) {
    return static_cast<int>(Send(list, LVM_GETITEMCOUNT));
}

std::wstring CellText(HWND list, int row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    return ItemText(list, LVM_GETITEMTEXTW, row, item);
}

std::vector<std::wstring> TextsOfRow(HWND list, int row, int columns) {
    std::vector<std::wstring> texts;
    for (int column = 0; column < columns; ++column) texts.push_back(CellText(list, row, column));
    return texts;
}

std::vector<std::wstring> ColumnTexts(HWND list, int column) {
    std::vector<std::wstring> texts;
    for (int row = 0; row < RowCountOf(list); ++row) texts.push_back(CellText(list, row, column));
    return texts;
}

int ImageOfRow(HWND list, int row) {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    return Exchange(list, LVM_GETITEMW, 0, item).iImage;
}

// The input: `left` chooses one of the row's rectangles.
RECT LabelOfRow(HWND list, int row) {
    return Exchange(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), RECT{LVIR_LABEL, 0, 0, 0});
}

std::vector<int> SelectedRowsOf(HWND list) {
    std::vector<int> rows;
    for (int row = 0; row < RowCountOf(list); ++row) {
        if (Send(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0) rows.push_back(row);
    }
    return rows;
}

void SelectRow(HWND list, int row, bool select) {
    LVITEMW item{};
    item.stateMask = LVIS_SELECTED;
    item.state = select ? LVIS_SELECTED : 0U;
    Exchange(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), item);
}

void SelectRows(HWND list, const std::vector<int>& rows) {
    SelectRow(list, kEveryRow, false);
    for (const int row : rows) SelectRow(list, row);
}

}  // namespace kvn::test

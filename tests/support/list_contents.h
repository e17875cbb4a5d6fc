// The contents of a list view of any process, and its selected rows.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace kvn::test {

struct ListColumn {
    std::wstring title;  // up to 63 characters
    int width;           // pixels
    int alignment;       // LVCFMT_LEFT or another

    friend bool operator==(const ListColumn&, const ListColumn&) = default;
};
std::vector<ListColumn> ColumnsOf(HWND list);

int RowCountOf(HWND list);
// Up to 2,047 characters.
std::wstring CellText(HWND list, int row, int column);
// The texts of the first columns, and those of one column from the top.
std::vector<std::wstring> TextsOfRow(HWND list, int row, int columns);
std::vector<std::wstring> ColumnTexts(HWND list, int column);
// The index of the row's image, or -1.
int ImageOfRow(HWND list, int row);
// The place of the row's first text, in the list's own coordinates.
RECT LabelOfRow(HWND list, int row);

std::vector<int> SelectedRowsOf(HWND list);
// Selects or deselects the row by a message; the other rows do not change.
void SelectRow(HWND list, int row, bool select = true);
// Selects these rows and no others.
void SelectRows(HWND list, const std::vector<int>& rows);

}  // namespace kvn::test

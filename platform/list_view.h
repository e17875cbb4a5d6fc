// List views in report view.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kvn::platform {

struct ListColumn {
    UINT titleId;  // in the module's string table
    int width;     // pixels
};

// Adds the columns in their order, left aligned.
void AddListColumns(HWND list, HINSTANCE module, std::span<const ListColumn> columns);

// A click anywhere in a row selects it.
void SelectFullRows(HWND list);

// Inserts a row with the text of its first column and returns its index. A row beyond the end becomes the last one. In
// a list with images the row shows the image with this index; -1: none.
int InsertListRow(HWND list, int row, const std::wstring& text, std::optional<int> image = std::nullopt);

void SetListText(HWND list, int row, int column, const std::wstring& text);

// The text of a cell, cut to this number of UTF-16 units but never in the middle of a surrogate pair.
std::wstring ListText(HWND list, int row, int column, int maxLength);

int ListRowCount(HWND list);
int SelectedRowCount(HWND list);

// The selected rows from the top, and the first of them.
std::vector<int> SelectedRows(HWND list);
std::optional<int> FirstSelectedRow(HWND list);

void DeleteListRow(HWND list, int row);
void ClearListRows(HWND list);

}  // namespace kvn::platform

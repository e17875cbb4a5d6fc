// List views in report view.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace kvn::platform {

// Adds the column at this index, left aligned and so many pixels wide.
void AddListColumn(HWND list, int index, const std::wstring& title, int width);

// A click anywhere in a row selects it.
void SelectFullRows(HWND list);

// Inserts a row with the text of its first column. The image is an index into the list's image list, -1 for none.
void InsertListRow(HWND list, int row, const std::wstring& text, std::optional<int> image = std::nullopt);

void SetListText(HWND list, int row, int column, const std::wstring& text);

// The text of the row's first column, up to 255 characters.
std::wstring ListText(HWND list, int row);

int ListRowCount(HWND list);
int SelectedRowCount(HWND list);

// The first selected row from the top; nothing when none is selected.
std::optional<int> FirstSelectedRow(HWND list);

void DeleteListRow(HWND list, int row);
void ClearListRows(HWND list);

// While it lives, changes of the list are not painted; at its end they are, all at once.
class PausedRedraw {
public:
    explicit PausedRedraw(HWND listView);
    ~PausedRedraw();
    PausedRedraw(const PausedRedraw&) = delete;
    PausedRedraw& operator=(const PausedRedraw&) = delete;

private:
    HWND list;
};

}  // namespace kvn::platform

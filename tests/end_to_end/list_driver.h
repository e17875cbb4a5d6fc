// Uses and reads a list view of another process as a user does.
#pragma once

#include <windows.h>

#include <array>
#include <string>
#include <vector>

#include "tests/support/list_contents.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {

class ListDriver {
public:
    explicit ListDriver(HWND listView) : list(listView) {}

    HWND Window() const { return list; }
    int RowCount() const { return test::RowCountOf(list); }
    std::string Text(int row, int column) const { return test::Narrow(test::CellText(list, row, column)); }
    // The first columns of every row.
    template <std::size_t columns>
    std::vector<std::array<std::string, columns>> Rows() const;
    std::vector<int> SelectedRows() const { return test::SelectedRowsOf(list); }

    // Clicks the row and waits until it alone is selected.
    void Select(int row) const;
    // Shift-clicks the row, and waits until this many rows are selected.
    void SelectUpTo(int row, std::size_t selectedCount) const;
    void DoubleClick(int row) const;

private:
    // A point on the row's text, which belongs to the row in every list; scrolls the row into view.
    POINT PlaceOf(int row) const;

    HWND list;
};

template <std::size_t columns>
std::vector<std::array<std::string, columns>> ListDriver::Rows() const {
    std::vector<std::array<std::string, columns>> rows(static_cast<std::size_t>(RowCount()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < columns; ++column) {
            rows[row][column] = Text(static_cast<int>(row), static_cast<int>(column));
        }
    }
    return rows;
}

}  // namespace kvn::end_to_end

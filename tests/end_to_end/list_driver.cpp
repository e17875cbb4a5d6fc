#include "tests/end_to_end/list_driver.h"

#include <commctrl.h>

#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

constexpr int kIntoTheText = 4;  // pixels

}  // namespace

int ListDriver::RowCount() const {
    return static_cast<int>(Send(list, LVM_GETITEMCOUNT));
}

std::string ListDriver::Text(int row, int column) const {
    return test::Narrow(ReadListText(list, row, column));
}

std::vector<int> ListDriver::SelectedRows() const {
    std::vector<int> rows;
    for (int row = 0; row < RowCount(); ++row) {
        if (Send(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) != 0) rows.push_back(row);
    }
    return rows;
}

POINT ListDriver::PlaceOf(int row) const {
    Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row));
    const RECT label = ReadRectangle(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), LVIR_LABEL);
    POINT place{label.left + kIntoTheText, MiddleOf(label).y};
    MapWindowPoints(list, nullptr, &place, 1);
    return place;
}

void ListDriver::Select(int row) const {
    ClickAt(PlaceOf(row));
    WaitFor("the selection of a row", [&] { return SelectedRows() == std::vector<int>{row}; });
}

void ListDriver::SelectUpTo(int row, std::size_t selectedCount) const {
    const HeldKey shift(VK_LSHIFT);
    ClickAt(PlaceOf(row));
    WaitFor("the selection of rows", [&] { return SelectedRows().size() == selectedCount; });
}

void ListDriver::DoubleClick(int row) const {
    DoubleClickAt(PlaceOf(row));
}

}  // namespace kvn::end_to_end

#include "tests/end_to_end/list_driver.h"

#include <commctrl.h>

#include "tests/end_to_end/input.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/end_to_end/windows_of_process.h"

namespace kvn::end_to_end {
namespace {

constexpr int kIntoTheText = 4;  // pixels

}  // namespace

POINT ListDriver::PlaceOf(int row) const {
    Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row));
    const RECT label = test::LabelOfRow(list, row);
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

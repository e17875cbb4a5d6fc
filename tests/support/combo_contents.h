// The entries and the selection of a combo box.
#pragma once

#include <windows.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kvn::test {

struct ComboEntry {
    std::wstring text;
    int data;

    friend bool operator==(const ComboEntry&, const ComboEntry&) = default;
};

std::vector<ComboEntry> EntriesOf(HWND combo);
std::vector<int> DataOf(HWND combo);
std::optional<int> SelectedData(HWND combo);
// Empty when nothing is selected.
std::wstring SelectedText(HWND combo);
// -1 when there is none.
int IndexOfData(HWND combo, int data);

}  // namespace kvn::test

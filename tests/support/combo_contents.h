// The entries and the selection of a combo box of any process.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace kvn::test {

struct ComboEntry {
    std::wstring text;
    int data;

    friend bool operator==(const ComboEntry&, const ComboEntry&) = default;
};

int EntryCountOf(HWND combo);
std::vector<ComboEntry> EntriesOf(HWND combo);
std::vector<std::wstring> EntryTextsOf(HWND combo);
std::vector<int> DataOf(HWND combo);
std::optional<int> SelectedData(HWND combo);
// -1 when nothing is selected.
int SelectedIndex(HWND combo);
// Empty when nothing is selected.
std::wstring SelectedText(HWND combo);
// -1 when there is none.
int IndexOfData(HWND combo, int data);
bool IsListOpen(HWND combo);

// Selects the entry with this data as a program does, which sends no notification.
void SelectData(HWND combo, int data);

}  // namespace kvn::test

// Uses and reads a drop-down list of another process as a user does.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace kvn::end_to_end {

// Item data of the selected entry; nothing when none is selected.
std::optional<int> ChosenData(HWND combo);
// Empty when none is selected.
std::wstring ChosenText(HWND combo);
int EntryCount(HWND combo);
std::vector<std::string> EntryTexts(HWND combo);

// Opens the list with a click and clicks the entry with this data.
void ChooseByMouse(HWND combo, int data);
// The same by the entry's place.
void ChooseEntryByMouse(HWND combo, int index);

}  // namespace kvn::end_to_end

// Combo boxes whose entries carry a number.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace kvn::platform {

// Appends an entry.
void AddComboItem(HWND combo, const std::wstring& text, int data);

// The number of the entry at this index; nothing for a negative one.
std::optional<int> ComboData(HWND combo, int index);

// The number of the selected entry; nothing if none is selected.
std::optional<int> SelectedComboData(HWND combo);

// The text of the selected entry; empty if none is selected.
std::wstring SelectedComboText(HWND combo);

// The index of the first entry with this number.
[[nodiscard]] std::optional<int> FindComboData(HWND combo, int data);

// Selects the entry with this number, or none if there is no such entry.
void SelectComboData(HWND combo, int data);

// Makes the drop-down list wide enough for its texts. Call it when the list is about to open.
void WidenDropList(HWND combo);

// Restores the selection of a combo box if its list is left without confirming.
class OpenedList {
public:
    // Call it with every notification of the combo box, before anything else handles it. True if it changed the
    // selection.
    bool OnNotification(HWND combo, UINT notification);

    // Makes the current selection count as confirmed.
    void Confirm() { indexBefore.reset(); }

private:
    std::optional<int> indexBefore;  // while the list is open and nothing is confirmed
};

// Closes the list if it is open, without confirming.
void LeaveList(HWND combo);

// Gives the entry at this index another text. The selection stays on it if it was there.
void ReplaceComboText(HWND combo, int index, const std::wstring& text);

}  // namespace kvn::platform

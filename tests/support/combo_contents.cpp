#include "tests/support/combo_contents.h"

#include "tests/support/window_messages.h"

namespace kvn::test {
namespace {

int Ask(HWND combo, UINT message, int index = 0) {
    return static_cast<int>(Send(combo, message, static_cast<WPARAM>(index)));
}

std::wstring EntryText(HWND combo, int index) {
    const int length = Ask(combo, CB_GETLBTEXTLEN, index);
    if (length < 0) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    Send(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace

int EntryCountOf(HWND combo) {
    return Ask(combo, CB_GETCOUNT);
}

std::vector<ComboEntry> EntriesOf(HWND combo) {
    std::vector<ComboEntry> entries;
    const int count = EntryCountOf(combo);
    for (int i = 0; i < count; ++i) entries.push_back({EntryText(combo, i), Ask(combo, CB_GETITEMDATA, i)});
    return entries;
}

std::vector<std::wstring> EntryTextsOf(HWND combo) {
    std::vector<std::wstring> texts;
    for (const ComboEntry& entry : EntriesOf(combo)) texts.push_back(entry.text);
    return texts;
}

std::vector<int> DataOf(HWND combo) {
    std::vector<int> data;
    for (const ComboEntry& entry : EntriesOf(combo)) data.push_back(entry.data);
    return data;
}

int SelectedIndex(HWND combo) {
    return Ask(combo, CB_GETCURSEL);
}

std::optional<int> SelectedData(HWND combo) {
    const int index = SelectedIndex(combo);
    if (index < 0) return std::nullopt;
    return Ask(combo, CB_GETITEMDATA, index);
}

std::wstring SelectedText(HWND combo) {
    return EntryText(combo, SelectedIndex(combo));
}

int IndexOfData(HWND combo, int data) {
    const int count = EntryCountOf(combo);
    for (int i = 0; i < count; ++i) {
        if (Ask(combo, CB_GETITEMDATA, i) == data) return i;
    }
    return -1;
}

bool IsListOpen(HWND combo) {
    return Ask(combo, CB_GETDROPPEDSTATE) != 0;
}

void SelectData(HWND combo, int data) {
    Ask(combo, CB_SETCURSEL, IndexOfData(combo, data));
}

}  // namespace kvn::test

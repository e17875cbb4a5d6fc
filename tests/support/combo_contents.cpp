#include "tests/support/combo_contents.h"

namespace kvn::test {
namespace {

int Ask(HWND combo, UINT message, int index = 0) {
    return static_cast<int>(SendMessageW(combo, message, static_cast<WPARAM>(index), 0));
}

std::wstring EntryText(HWND combo, int index) {
    const int length = Ask(combo, CB_GETLBTEXTLEN, index);
    if (length < 0) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace

std::vector<ComboEntry> EntriesOf(HWND combo) {
    std::vector<ComboEntry> entries;
    const int count = Ask(combo, CB_GETCOUNT);
    for (int i = 0; i < count; ++i) entries.push_back({EntryText(combo, i), Ask(combo, CB_GETITEMDATA, i)});
    return entries;
}

std::vector<int> DataOf(HWND combo) {
    std::vector<int> data;
    for (const ComboEntry& entry : EntriesOf(combo)) data.push_back(entry.data);
    return data;
}

std::optional<int> SelectedData(HWND combo) {
    const int index = Ask(combo, CB_GETCURSEL);
    if (index < 0) return std::nullopt;
    return Ask(combo, CB_GETITEMDATA, index);
}

std::wstring SelectedText(HWND combo) {
    return EntryText(combo, Ask(combo, CB_GETCURSEL));
}

int IndexOfData(HWND combo, int data) {
    const int count = Ask(combo, CB_GETCOUNT);
    for (int i = 0; i < count; ++i) {
        if (Ask(combo, CB_GETITEMDATA, i) == data) return i;
    }
    return -1;
}

}  // namespace kvn::test

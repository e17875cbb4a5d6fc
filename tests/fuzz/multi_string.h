// Reads the lists of the registry as the service does: entries ended by a zero, the block by one more, fields within an
// entry separated by TAB.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvn::fuzz {

using ListEntry = std::vector<std::wstring>;

inline ListEntry FieldsOf(std::wstring_view entry) {
    ListEntry fields;
    while (true) {
        const std::size_t tab = entry.find(L'\t');
        fields.emplace_back(entry.substr(0, tab));
        if (tab == std::wstring_view::npos) return fields;
        entry.remove_prefix(tab + 1);
    }
}

// The entries; nothing if the block does not end at its last zero.
inline std::optional<std::vector<ListEntry>> EntriesOf(std::wstring_view block) {
    std::vector<ListEntry> entries;
    while (true) {
        const std::size_t zero = block.find(L'\0');
        if (zero == std::wstring_view::npos) return std::nullopt;
        const std::wstring_view entry = block.substr(0, zero);
        block.remove_prefix(zero + 1);
        if (entry.empty()) break;
        entries.push_back(FieldsOf(entry));
    }
    if (!block.empty()) return std::nullopt;
    return entries;
}

}  // namespace kvn::fuzz

// An array indexed by a scoped enumeration.
#pragma once

#include <array>
#include <cstddef>

namespace kvn::model {

template <typename Enum, typename T, std::size_t Count>
struct EnumArray {
    std::array<T, Count> items{};

    constexpr T& operator[](Enum index) { return items[static_cast<std::size_t>(index)]; }
    constexpr const T& operator[](Enum index) const { return items[static_cast<std::size_t>(index)]; }

    friend bool operator==(const EnumArray&, const EnumArray&) = default;
};

// Whether every row of a table is at the index of its enumerator. `key` returns the enumerator of a row.
template <typename Table, typename Key>
constexpr bool IsInEnumOrder(const Table& table, Key key) {
    for (std::size_t index = 0; index < table.size(); ++index) {
        if (static_cast<std::size_t>(key(table[index])) != index) return false;
    }
    return true;
}

}  // namespace kvn::model

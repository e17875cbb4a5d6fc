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

}  // namespace kvn::model

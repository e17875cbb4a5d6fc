// Code that the targets share: ends the run at a fault, and turns bytes into values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace kvn::fuzz {

// Ends the run unless the condition holds, so that the fuzzer keeps the input.
inline void Require(bool condition, std::string_view what) {
    if (condition) return;
    std::fprintf(stderr, "Broken: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

// Takes values from the front of the fuzzer's bytes. After their end everything is zero or empty.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : bytes(data, size) {}

    bool IsAtEnd() const { return bytes.empty(); }

    std::uint8_t Byte() { return Number<std::uint8_t>(); }

    template <typename T>
    T Number() {
        T number = 0;
        const auto taken = Take(sizeof number);
        if (!taken.empty()) std::memcpy(&number, taken.data(), taken.size());
        return number;
    }

    std::span<const std::uint8_t> Take(std::size_t count) {
        const auto taken = bytes.first(count < bytes.size() ? count : bytes.size());
        bytes = bytes.subspan(taken.size());
        return taken;
    }

    std::string Bytes() {
        const auto taken = Take(bytes.size());
        return {taken.begin(), taken.end()};
    }

    // The text up to the next zero byte or the end. ASCII is taken as it is; a byte from 0x80 on begins a unit of three
    // bytes, whose other two are any 16-bit character, including zero.
    std::wstring Text() {
        std::wstring text;
        while (!IsAtEnd()) {
            const std::uint8_t byte = Byte();
            if (byte == 0) break;
            text += static_cast<wchar_t>(byte < 0x80 ? byte : Number<std::uint16_t>());
        }
        return text;
    }

private:
    std::span<const std::uint8_t> bytes;
};

}  // namespace kvn::fuzz

// Two small code pages: tests of the profile document need no locale with them, and no Windows.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/text_codec.h"

namespace kvn::model::test {

inline constexpr wchar_t kReplacementCharacter = L'\xFFFD';

// One byte a character: the first 256 characters of Unicode without U+0080 to U+009F.
class LatinCodec final : public TextCodec {
public:
    std::optional<std::string> Encode(std::wstring_view text) const override {
        std::string bytes;
        for (const wchar_t character : text) {
            if (!IsEncodable(static_cast<std::uint32_t>(character))) return std::nullopt;
            bytes += static_cast<char>(character);
        }
        return bytes;
    }

    std::wstring Decode(std::string_view bytes) const override {
        std::wstring text;
        for (const char byte : bytes) {
            const std::uint32_t character = static_cast<unsigned char>(byte);
            text += IsEncodable(character) ? static_cast<wchar_t>(character) : kReplacementCharacter;
        }
        return text;
    }

private:
    static bool IsEncodable(std::uint32_t character) {
        return character > 0 && character <= 0xFF && (character < 0x80 || character > 0x9F);
    }
};

// ASCII, and two bytes for each of 128 characters from U+4E00 on. The second byte of some of them is one that means
// something in XML when it stands for itself.
class DoubleByteCodec final : public TextCodec {
public:
    static constexpr std::uint32_t kFirstCharacter = 0x4E00;
    static constexpr std::uint32_t kCharacterCount = 128;

    std::optional<std::string> Encode(std::wstring_view text) const override {
        std::string bytes;
        for (const wchar_t character : text) {
            const auto code = static_cast<std::uint32_t>(character);
            if (code > 0 && code < 0x80) {
                bytes += static_cast<char>(code);
            } else if (code >= kFirstCharacter && code < kFirstCharacter + kCharacterCount) {
                const std::uint32_t index = code - kFirstCharacter;
                bytes += static_cast<char>(kFirstLead + index / kTrails.size());
                bytes += static_cast<char>(kTrails[index % kTrails.size()]);
            } else {
                return std::nullopt;
            }
        }
        return bytes;
    }

    std::wstring Decode(std::string_view bytes) const override {
        std::wstring text;
        while (!bytes.empty()) {
            const auto byte = static_cast<unsigned char>(bytes[0]);
            const auto pair = bytes.size() < 2 ? std::nullopt : CharacterOf(byte, static_cast<unsigned char>(bytes[1]));
            const bool isAscii = byte > 0 && byte < 0x80;
            text += isAscii ? static_cast<wchar_t>(byte) : pair.value_or(kReplacementCharacter);
            bytes.remove_prefix(!isAscii && pair ? 2 : 1);
        }
        return text;
    }

private:
    static constexpr unsigned char kFirstLead = 0x81;
    static constexpr std::array<unsigned char, 8> kTrails{0x40, 0x5B, 0x5C, 0x5D, 0x7B, 0x7C, 0x80, 0xFC};

    static std::optional<wchar_t> CharacterOf(unsigned char lead, unsigned char trail) {
        const auto found = std::find(kTrails.begin(), kTrails.end(), trail);
        if (lead < kFirstLead || lead >= kFirstLead + kCharacterCount / kTrails.size() || found == kTrails.end()) {
            return std::nullopt;
        }
        const auto index = (lead - kFirstLead) * kTrails.size() + static_cast<std::size_t>(found - kTrails.begin());
        return static_cast<wchar_t>(kFirstCharacter + index);
    }
};

inline const LatinCodec kLatin;
inline const DoubleByteCodec kDoubleByte;

}  // namespace kvn::model::test

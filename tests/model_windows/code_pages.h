// The characters of a code page as Windows itself knows them.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace kvn::model::test {

struct CodedCharacter {
    std::string bytes;
    wchar_t character;
};

inline std::optional<wchar_t> CharacterOf(UINT codePage, const std::string& bytes) {
    wchar_t characters[4]{};
    const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                                           characters, static_cast<int>(std::size(characters)));
    return length == 1 ? std::optional(characters[0]) : std::nullopt;
}

// Every character of a code page of one or two bytes beyond ASCII. Of two spellings of a character both are there.
inline std::vector<CodedCharacter> CharactersOf(UINT codePage) {
    std::vector<CodedCharacter> characters;
    for (int first = 0x80; first <= 0xFF; ++first) {
        const std::string lead(1, static_cast<char>(first));
        if (!IsDBCSLeadByteEx(codePage, static_cast<BYTE>(first))) {
            if (const auto character = CharacterOf(codePage, lead)) characters.push_back({lead, *character});
            continue;
        }
        for (int second = 0x40; second <= 0xFC; ++second) {
            const std::string pair = lead + static_cast<char>(second);
            if (const auto character = CharacterOf(codePage, pair)) characters.push_back({pair, *character});
        }
    }
    return characters;
}

inline std::wstring AlphabetOf(UINT codePage) {
    std::wstring alphabet;
    for (const CodedCharacter& coded : CharactersOf(codePage)) alphabet += coded.character;
    return alphabet;
}

}  // namespace kvn::model::test

// The characters of a code page according to Windows.
#pragma once

#include <windows.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kvn::model::test {

// A code page, and the C library's name of a locale with it.
struct CodePageLocale {
    UINT codePage;
    const char* locale;
};
inline constexpr std::array<CodePageLocale, 4> kCodePageLocales{{{1252, "English_United States.1252"},
                                                                 {932, "Japanese_Japan.932"},
                                                                 {936, "Chinese_China.936"},
                                                                 {1251, "Russian_Russia.1251"}}};

// The user's code page. The environment names the one that a run expects, so that a missing locale does not go
// unnoticed.
inline UINT UserCodePage() {
    const char* const expected = std::getenv("KVN_EXPECTED_CODE_PAGE");
    if (expected != nullptr && std::to_string(GetACP()) != expected) {
        throw std::runtime_error("meant for code page " + std::string(expected) + ", but the user's is " +
                                 std::to_string(GetACP()));
    }
    return GetACP();
}

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

// The C library has no locale for UTF-8, so its "C" locale is used, in which each byte is the character of its number.
inline std::vector<CodedCharacter> CharactersOfTheCLocale() {
    std::vector<CodedCharacter> characters;
    for (int code = 0x80; code <= 0xFF; ++code) {
        characters.push_back({std::string(1, static_cast<char>(code)), static_cast<wchar_t>(code)});
    }
    return characters;
}

// Every character beyond ASCII of a code page of one or two bytes, or those that the C library has instead of UTF-8. A
// character with two encodings is listed twice.
inline std::vector<CodedCharacter> CharactersOf(UINT codePage) {
    if (codePage == CP_UTF8) return CharactersOfTheCLocale();
    std::vector<CodedCharacter> characters;
    for (int first = 0x80; first <= 0xFF; ++first) {
        const std::string lead(1, static_cast<char>(first));
        if (!IsDBCSLeadByteEx(codePage, static_cast<BYTE>(first))) {
            if (const auto character = CharacterOf(codePage, lead)) characters.push_back({lead, *character});
            continue;
        }
        for (int second = 0x40; second <= 0xFE; ++second) {
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

// Some characters of the user's code page, with one between them that is in no code page.
inline std::wstring TextOfUsersCodePage() {
    const std::wstring alphabet = AlphabetOf(UserCodePage());
    return alphabet.substr(0, 3) + L'\x939' + alphabet.substr(alphabet.size() - 3);
}

}  // namespace kvn::model::test

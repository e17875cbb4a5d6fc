#include "model/locale_codec.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace kvn::model {
namespace {

constexpr UINT kHostLocaleTextId = 1007;  // docs/kept-behaviour.md
constexpr std::size_t kFailed = static_cast<std::size_t>(-1);
constexpr wchar_t kReplacementCharacter = L'\xFFFD';
// No code page of Windows takes more bytes for one wide character.
constexpr std::size_t kMaxBytesPerCharacter = 4;

bool IsAscii(wchar_t character) {
    return character > 0 && character < 0x80;
}
bool IsAsciiByte(char byte) {
    return byte > 0;
}

}  // namespace

LocaleCodec::LocaleCodec(const char* localeName) {
    // Some C libraries return the user's locale for "C" until the thread has asked for another one.
    const platform::Owned<_locale_t, &_free_locale> other(_create_locale(LC_CTYPE, ".1252"));
    locale.Reset(_create_locale(LC_CTYPE, localeName));
    if (!locale) locale.Reset(_create_locale(LC_CTYPE, ""));
    // Some C libraries have no locale for UTF-8. Without any locale they would use that of the host process.
    if (!locale) locale.Reset(_create_locale(LC_CTYPE, "C"));
}

LocaleCodec LocaleCodec::OfHostProgram() {
    std::array<char, 128> name{};
    LoadStringA(GetModuleHandleW(nullptr), kHostLocaleTextId, name.data(), static_cast<int>(name.size()));
    return LocaleCodec(name.data());
}

std::optional<std::string> LocaleCodec::Encode(std::wstring_view text) const {
    if (std::all_of(text.begin(), text.end(), IsAscii)) return std::string(text.begin(), text.end());
    if (text.find(L'\0') != std::wstring_view::npos) return std::nullopt;

    const std::wstring terminated(text);
    std::string encoded(text.size() * kMaxBytesPerCharacter, '\0');
    const std::size_t length = _wcstombs_l(encoded.data(), terminated.c_str(), encoded.size(), locale.Get());
    if (length == kFailed) return std::nullopt;
    encoded.resize(length);
    // A C library may substitute a similar character for one that the code page lacks.
    if (Decode(encoded) != text) return std::nullopt;
    return encoded;
}

std::wstring LocaleCodec::Decode(std::string_view bytes) const {
    // cppcheck-suppress invalidLifetime ; it follows the view to a string of Encode, which outlives this call
    std::wstring text(bytes.begin(), bytes.end());
    if (std::all_of(bytes.begin(), bytes.end(), IsAsciiByte)) return text;

    const std::string terminated(bytes);
    const std::size_t length = _mbstowcs_l(text.data(), terminated.c_str(), text.size(), locale.Get());
    if (length != kFailed) {
        text.resize(length);
        return text;
    }

    text.clear();
    while (!bytes.empty()) {
        wchar_t character = kReplacementCharacter;
        const int used = _mbtowc_l(&character, bytes.data(), bytes.size(), locale.Get());
        text += used > 0 ? character : kReplacementCharacter;
        bytes.remove_prefix(static_cast<std::size_t>(std::max(used, 1)));
    }
    return text;
}

}  // namespace kvn::model

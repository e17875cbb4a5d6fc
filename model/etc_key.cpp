#include "model/etc_key.h"

#include <algorithm>

namespace kvn::model {
namespace {

constexpr wchar_t kKeySeparator = L'+';
constexpr std::wstring_view kBrackets = L"[]";
constexpr std::wstring_view kBlanks = L" \t\n\v\f\r";

// The text without the blanks before and after it.
std::wstring_view Trimmed(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// Takes the next run of characters without brackets off the front of the text; empty if there is none.
std::wstring_view TakeToken(std::wstring_view& text) {
    const std::size_t begin = text.find_first_not_of(kBrackets);
    if (begin == std::wstring_view::npos) return {};
    const std::size_t end = std::min(text.find_first_of(kBrackets, begin), text.size());
    const std::wstring_view token = text.substr(begin, end - begin);
    text.remove_prefix(end);
    return token;
}

}  // namespace

std::wstring EtcKeyToText(const EtcKey& keys) {
    std::wstring text;
    for (const KeyCode code : keys.codes) {
        const wchar_t* name = code == kPromptKey ? nullptr : KeyNameOf(code);
        if (name == nullptr) continue;
        if (!text.empty()) text += kKeySeparator;
        text += name;
    }
    return text;
}

EtcKey TextToEtcKey(std::wstring_view text, std::wstring_view arbitraryKeyText) {
    text = Trimmed(text);
    std::wstring_view names = TakeToken(text);
    const bool isHeading = !arbitraryKeyText.empty() && names.find(arbitraryKeyText) != std::wstring_view::npos;
    if (isHeading) names = TakeToken(text);

    EtcKey keys;
    for (KeyCode& code : keys.codes) {
        if (names.empty()) break;
        const std::size_t end = std::min(names.find(kKeySeparator), names.size());
        code = KeyCodeOf(Trimmed(names.substr(0, end)));
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return keys;
}

std::wstring ArbitraryKeyLabel(std::wstring_view arbitraryKeyText, const EtcKey& keys) {
    std::wstring label(arbitraryKeyText);
    const std::wstring names = EtcKeyToText(keys);
    if (!names.empty()) label += L'[' + names + L']';
    return label;
}

EtcKey WithoutShiftKeys(EtcKey keys) {
    std::replace_if(keys.codes.begin(), keys.codes.end(), IsShiftKey, kNoKey);
    return keys;
}

}  // namespace kvn::model

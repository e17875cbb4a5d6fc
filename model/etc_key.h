// EtcKey: the combination of up to three keys that the function "Arbitrary key" sends, and its text.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "model/key_names.h"

namespace kvn::model {

// Key codes in the order in which they were pressed; kNoKey where there is none.
struct EtcKey {
    std::array<KeyCode, 3> codes{kNoKey, kNoKey, kNoKey};

    friend bool operator==(const EtcKey&, const EtcKey&) = default;
};

// The names of the keys joined by "+"; codes that name no key are left out, so the text of an unused EtcKey is empty.
std::wstring EtcKeyToText(const EtcKey& keys);

// The keys that a text names: "Left Ctrl+V", or the form with a heading, "Arbitrary key[Left Ctrl+V]", where
// arbitraryKeyText is the heading's text. Blanks around a name do not count. A name that is not in the key table
// becomes kNoKey. Since "+" separates and brackets delimit, the keys "+(Numerical pad)", "[" and "]" have a text but
// cannot be read from one.
EtcKey TextToEtcKey(std::wstring_view text, std::wstring_view arbitraryKeyText);

// The text of a chooser for the function "Arbitrary key", followed by the keys, if any, in brackets.
std::wstring ArbitraryKeyLabel(std::wstring_view arbitraryKeyText, const EtcKey& keys);

// The keys without any Shift key.
EtcKey WithoutShiftKeys(EtcKey keys);

}  // namespace kvn::model

// The vocabulary of arbitrary keys: every key that can be stored, by its Windows virtual-key code and its name. The
// user sees this name, and the profile file and the registry store it.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace kvn::model {

// A virtual-key code, or kNoKey.
using KeyCode = std::int32_t;

inline constexpr KeyCode kNoKey = -2;

// The code of the table's first row, a prompt rather than a key.
inline constexpr KeyCode kPromptKey = 0;

struct KeyNameRow {
    KeyCode code;
    const wchar_t* name;
    bool listed;  // offered in drop-down lists; an unlisted key can only be pressed
};

inline constexpr std::array<KeyNameRow, 113> kKeyNameTable{{
    {0, L"Enter key", true},
    {8, L"BackSpace", true},
    {9, L"Tab", true},
    {13, L"Enter", true},
    {16, L"Shift", true},
    {17, L"Ctrl", true},
    {18, L"Alt", true},
    {19, L"Pause", true},
    {20, L"CapsLock", true},
    {27, L"Esc", true},
    {32, L"Space", true},
    {33, L"PageUp", true},
    {34, L"PageDown", true},
    {35, L"End", true},
    {36, L"Home", true},
    {37, L"Left", true},
    {38, L"Up", true},
    {39, L"Right", true},
    {40, L"Down", true},
    {44, L"PrintScreen", true},
    {45, L"Insert", true},
    {46, L"Delete", true},
    {91, L"Left Windows", true},
    {92, L"Right Windows", true},
    {93, L"Application key", true},
    {96, L"0(Numerical pad)", true},
    {97, L"1(Numerical pad)", true},
    {98, L"2(Numerical pad)", true},
    {99, L"3(Numerical pad)", true},
    {100, L"4(Numerical pad)", true},
    {101, L"5(Numerical pad)", true},
    {102, L"6(Numerical pad)", true},
    {103, L"7(Numerical pad)", true},
    {104, L"8(Numerical pad)", true},
    {105, L"9(Numerical pad)", true},
    {106, L"*(Numerical pad)", true},
    {107, L"+(Numerical pad)", true},
    {109, L"-(Numerical pad)", true},
    {110, L".(Numerical pad)", true},
    {111, L"/(Numerical pad)", true},
    {144, L"NumLock", true},
    {145, L"ScrollLock", true},
    {160, L"Left Shift", true},
    {161, L"Right Shift", true},
    {162, L"Left Ctrl", true},
    {163, L"Right Ctrl", true},
    {164, L"Left Alt", true},
    {165, L"Right Alt", true},
    {28, L"Convert", false},
    {29, L"No conversion", false},
    {25, L"Half-width/Full-width", false},
    {21, L"Katakana/Hiragana", false},
    {48, L"0", false},
    {49, L"1", false},
    {50, L"2", false},
    {51, L"3", false},
    {52, L"4", false},
    {53, L"5", false},
    {54, L"6", false},
    {55, L"7", false},
    {56, L"8", false},
    {57, L"9", false},
    {65, L"A", false},
    {66, L"B", false},
    {67, L"C", false},
    {68, L"D", false},
    {69, L"E", false},
    {70, L"F", false},
    {71, L"G", false},
    {72, L"H", false},
    {73, L"I", false},
    {74, L"J", false},
    {75, L"K", false},
    {76, L"L", false},
    {77, L"M", false},
    {78, L"N", false},
    {79, L"O", false},
    {80, L"P", false},
    {81, L"Q", false},
    {82, L"R", false},
    {83, L"S", false},
    {84, L"T", false},
    {85, L"U", false},
    {86, L"V", false},
    {87, L"W", false},
    {88, L"X", false},
    {89, L"Y", false},
    {90, L"Z", false},
    {112, L"F1", false},
    {113, L"F2", false},
    {114, L"F3", false},
    {115, L"F4", false},
    {116, L"F5", false},
    {117, L"F6", false},
    {118, L"F7", false},
    {119, L"F8", false},
    {120, L"F9", false},
    {121, L"F10", false},
    {122, L"F11", false},
    {123, L"F12", false},
    {186, L";", false},
    {187, L"=", false},
    {188, L",", false},
    {189, L"-", false},
    {190, L".", false},
    {191, L"/", false},
    {192, L"`", false},
    {219, L"[", false},
    {220, L"\\", false},
    {221, L"]", false},
    {222, L"'", false},
    {223, L"_", false},
    {226, L"BackSlash", false},
}};

// The name of the key with this code, or nullptr if the table has none.
const wchar_t* KeyNameOf(KeyCode code);

// The code of the key with exactly this name, or kNoKey.
KeyCode KeyCodeOf(std::wstring_view name);

// Whether the code is one of the three codes of the Shift keys.
bool IsShiftKey(KeyCode code);

}  // namespace kvn::model

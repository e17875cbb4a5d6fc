// The module's texts and dialog templates in each of its languages, as they are in the resources.
#pragma once

#include <windows.h>

#include <array>
#include <map>
#include <string>
#include <vector>

namespace kvn::test {

inline constexpr WORD kEnglish = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
inline constexpr WORD kJapanese = MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT);
inline constexpr std::array kLanguages{kEnglish, kJapanese};

// The module's dialogs, the page first.
inline const std::array<LPCWSTR, 10> kDialogNames{
    L"KorvenMouseUtil",    MAKEINTRESOURCEW(119), MAKEINTRESOURCEW(120), MAKEINTRESOURCEW(121), MAKEINTRESOURCEW(122),
    MAKEINTRESOURCEW(124), MAKEINTRESOURCEW(125), MAKEINTRESOURCEW(128), MAKEINTRESOURCEW(129), MAKEINTRESOURCEW(131)};

// For messages of tests.
std::string DialogName(LPCWSTR dialog);

// Every text that the module has in exactly this language, by its number.
std::map<UINT, std::wstring> TextsIn(HMODULE module, WORD language);

// The languages in which the module has a resource, in ascending order.
std::vector<WORD> LanguagesOf(HMODULE module, LPCWSTR type, LPCWSTR name);

struct TemplateControl {
    DWORD style;
    DWORD extendedStyle;
    SHORT x, y, width, height;  // in dialog units
    int id;                     // -1: not used
    std::wstring className;     // in capitals
    std::wstring text;

    bool IsButton() const { return className == L"BUTTON"; }  // a group box is one too
    bool IsGroupBox() const { return IsButton() && (style & BS_TYPEMASK) == BS_GROUPBOX; }
    bool IsStatic() const { return className == L"STATIC"; }
};

struct DialogTemplate {
    DWORD style = 0;
    DWORD extendedStyle = 0;
    SHORT width = 0, height = 0;  // in dialog units
    std::wstring caption;
    int fontPoints = 0;  // 0: the dialog names no font
    std::wstring fontFace;
    std::vector<TemplateControl> controls;  // in tab order
};

// The template in exactly this language; fails the test if there is none.
DialogTemplate TemplateIn(HMODULE module, LPCWSTR dialog, WORD language);

}  // namespace kvn::test

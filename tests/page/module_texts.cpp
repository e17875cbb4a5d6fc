#include "tests/page/module_texts.h"

#include <cstring>
#include <stdexcept>

namespace kvn::test {
namespace {

constexpr UINT kTextsInBlock = 16;
constexpr WORD kAtomMark = 0xFFFF;
constexpr DWORD kControlHasNoId = 0xFFFFFFFF;

const std::map<WORD, std::wstring> kSystemClasses{{0x80, L"BUTTON"},  {0x81, L"EDIT"},      {0x82, L"STATIC"},
                                                  {0x83, L"LISTBOX"}, {0x84, L"SCROLLBAR"}, {0x85, L"COMBOBOX"}};

// Reads the values of a resource in order.
class Reader {
public:
    Reader(HMODULE module, HRSRC resource)
        : begin(static_cast<const std::byte*>(LockResource(LoadResource(module, resource)))),
          next(begin),
          end(begin + SizeofResource(module, resource)) {}

    template <typename Value>
    Value Take() {
        Value value{};
        if (end - next < static_cast<std::ptrdiff_t>(sizeof value)) throw std::runtime_error("a resource ends early");
        std::memcpy(&value, next, sizeof value);
        next += sizeof value;
        return value;
    }
    void Skip(std::ptrdiff_t bytes) { next += bytes; }
    void AlignToDword() { next += (4 - (next - begin) % 4) % 4; }
    std::wstring TakeText(std::size_t length) {
        std::wstring text;
        while (text.size() < length) text += Take<wchar_t>();
        return text;
    }
    std::wstring TakeText() {
        std::wstring text;
        while (const auto character = Take<wchar_t>()) text += character;
        return text;
    }
    // A text, or the number that replaces it.
    std::wstring TakeName() {
        const auto first = Take<WORD>();
        if (first == 0) return {};
        if (first == kAtomMark) {
            const auto number = Take<WORD>();
            const auto known = kSystemClasses.find(number);
            return known == kSystemClasses.end() ? L"#" + std::to_wstring(number) : known->second;
        }
        return static_cast<wchar_t>(first) + TakeText();
    }

private:
    const std::byte* begin;
    const std::byte* next;
    const std::byte* end;
};

TemplateControl TakeControl(Reader& reader) {
    TemplateControl control{};
    reader.AlignToDword();
    reader.Take<DWORD>();  // help id
    control.extendedStyle = reader.Take<DWORD>();
    control.style = reader.Take<DWORD>();
    for (SHORT* value : {&control.x, &control.y, &control.width, &control.height}) *value = reader.Take<SHORT>();
    const auto id = reader.Take<DWORD>();
    control.id = id == kControlHasNoId || LOWORD(id) == LOWORD(kControlHasNoId) ? -1 : static_cast<int>(id);
    control.className = reader.TakeName();
    CharUpperW(control.className.data());
    control.text = reader.TakeName();
    reader.Skip(reader.Take<WORD>());  // creation data
    return control;
}

BOOL CALLBACK CollectLanguage(HMODULE /*module*/, LPCWSTR /*type*/, LPCWSTR /*name*/, WORD language, LONG_PTR found) {
    reinterpret_cast<std::vector<WORD>*>(found)->push_back(language);
    return TRUE;
}

}  // namespace

std::string DialogName(LPCWSTR dialog) {
    return IS_INTRESOURCE(dialog) ? "dialog " + std::to_string(reinterpret_cast<ULONG_PTR>(dialog)) : "the page";
}

std::map<UINT, std::wstring> TextsIn(HMODULE module, WORD language) {
    std::map<UINT, std::wstring> texts;
    for (UINT block = 1; block <= 0xFFFF / kTextsInBlock; ++block) {
        const HRSRC resource = FindResourceExW(module, MAKEINTRESOURCEW(6), MAKEINTRESOURCEW(block), language);
        if (resource == nullptr) continue;
        Reader reader(module, resource);
        for (UINT i = 0; i < kTextsInBlock; ++i) {
            const std::wstring text = reader.TakeText(reader.Take<WORD>());
            if (!text.empty()) texts[(block - 1) * kTextsInBlock + i] = text;
        }
    }
    return texts;
}

std::vector<WORD> LanguagesOf(HMODULE module, LPCWSTR type, LPCWSTR name) {
    std::vector<WORD> languages;
    EnumResourceLanguagesW(module, type, name, CollectLanguage, reinterpret_cast<LONG_PTR>(&languages));
    return languages;
}

DialogTemplate TemplateIn(HMODULE module, LPCWSTR dialog, WORD language) {
    const HRSRC resource = FindResourceExW(module, MAKEINTRESOURCEW(5), dialog, language);
    if (resource == nullptr) throw std::runtime_error("no " + DialogName(dialog) + " in a language");
    Reader reader(module, resource);
    DialogTemplate result;
    reader.Take<DWORD>();  // version and signature
    reader.Take<DWORD>();  // help id
    result.extendedStyle = reader.Take<DWORD>();
    result.style = reader.Take<DWORD>();
    const auto count = reader.Take<WORD>();
    reader.Take<DWORD>();  // position
    result.width = reader.Take<SHORT>();
    result.height = reader.Take<SHORT>();
    reader.TakeName();  // menu
    reader.TakeName();  // class
    result.caption = reader.TakeText();
    if ((result.style & DS_SETFONT) != 0) {
        result.fontPoints = reader.Take<WORD>();
        reader.Take<DWORD>();  // weight, italic, character set
        result.fontFace = reader.TakeText();
    }
    for (WORD i = 0; i < count; ++i) result.controls.push_back(TakeControl(reader));
    return result;
}

}  // namespace kvn::test

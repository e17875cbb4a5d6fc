#include "model/key_names.h"

#include <algorithm>

namespace kvn::model {
namespace {

constexpr std::array<KeyCode, 3> kShiftKeys{16, 160, 161};

// Most names differ in the first letter; only the others are compared in full.
bool IsName(const wchar_t* name, std::wstring_view text) {
    return !text.empty() && *name == text.front() && name == text;
}

}  // namespace

const wchar_t* KeyNameOf(KeyCode code) {
    const auto row = std::ranges::find(kKeyNameTable, code, &KeyNameRow::code);
    return row == kKeyNameTable.end() ? nullptr : row->name;
}

KeyCode KeyCodeOf(std::wstring_view name) {
    const auto row = std::ranges::find_if(
        kKeyNameTable, [name](const wchar_t* each) { return IsName(each, name); }, &KeyNameRow::name);
    return row == kKeyNameTable.end() ? kNoKey : row->code;
}

bool IsShiftKey(KeyCode code) {
    return std::ranges::find(kShiftKeys, code) != kShiftKeys.end();
}

}  // namespace kvn::model

#include "model/key_names.h"

#include <algorithm>

namespace kvn::model {
namespace {

constexpr std::array<KeyCode, 3> kShiftKeys{16, 160, 161};

// Most names differ in their first letter: only the others are measured to be compared.
bool IsName(const wchar_t* name, std::wstring_view text) {
    return !text.empty() && *name == text.front() && name == text;
}

}  // namespace

const wchar_t* KeyNameOf(KeyCode code) {
    const auto row = std::find_if(KeyNameTable.begin(), KeyNameTable.end(),
                                  [code](const KeyNameRow& candidate) { return candidate.code == code; });
    return row == KeyNameTable.end() ? nullptr : row->name;
}

KeyCode KeyCodeOf(std::wstring_view name) {
    const auto row = std::find_if(KeyNameTable.begin(), KeyNameTable.end(),
                                  [name](const KeyNameRow& candidate) { return IsName(candidate.name, name); });
    return row == KeyNameTable.end() ? kNoKey : row->code;
}

bool IsShiftKey(KeyCode code) {
    return std::find(kShiftKeys.begin(), kShiftKeys.end(), code) != kShiftKeys.end();
}

}  // namespace kvn::model

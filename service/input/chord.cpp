#include "service/input/chord.h"

#include <algorithm>

namespace kvn::service {
namespace {

struct SidelessRow {
    WORD named;
    WORD pressed;
};

constexpr std::array<SidelessRow, 3> kSideless{{
    {VK_SHIFT, VK_LSHIFT},
    {VK_CONTROL, VK_LCONTROL},
    {VK_MENU, VK_LMENU},
}};

ChordKey KeyOf(model::KeyCode code) {
    const WORD key = static_cast<WORD>(code);
    const auto row = std::ranges::find(kSideless, key, &SidelessRow::named);
    return row == kSideless.end() ? ChordKey{key, false} : ChordKey{row->pressed, true};
}

bool IsKey(model::KeyCode code) {
    return code != model::kPromptKey && model::KeyNameOf(code) != nullptr;
}

bool IsWindowsKey(const ChordKey& key) {
    return key.key == VK_LWIN || key.key == VK_RWIN;
}

// The modifiers are listed in pairs.
constexpr std::size_t IndexOfTwin(std::size_t index) {
    return index ^ 1U;
}

}  // namespace

bool IsModifier(WORD key) {
    return std::ranges::find(kModifiers, key) != kModifiers.end();
}

WORD TwinOf(WORD modifier) {
    const auto found = std::ranges::find(kModifiers, modifier);
    if (found == kModifiers.end()) return 0;
    return kModifiers[IndexOfTwin(static_cast<std::size_t>(found - kModifiers.begin()))];
}

Chord::Chord(std::span<const model::KeyCode> codes) {
    for (const model::KeyCode code : codes) {
        if (IsKey(code)) Add(KeyOf(code));
    }
}

void Chord::Add(ChordKey added) {
    const bool isThere = std::ranges::find(Keys(), added.key, &ChordKey::key) != Keys().end();
    if (!isThere && count < keys.size()) keys[count++] = added;
}

bool Chord::ArrivesAsNamed() const {
    const bool namesModifier = std::ranges::any_of(Keys(), IsModifier, &ChordKey::key);
    return namesModifier && (LastPlainKey() != 0 || std::ranges::any_of(Keys(), IsWindowsKey));
}

WORD Chord::LastPlainKey() const {
    WORD last = 0;
    for (const ChordKey& key : Keys()) {
        if (!IsModifier(key.key)) last = key.key;
    }
    return last;
}

bool Chord::IsForeign(WORD modifier) const {
    return std::ranges::none_of(
        Keys(), [=](const ChordKey& key) { return key.key == modifier || TwinOf(key.key) == modifier; });
}

}  // namespace kvn::service

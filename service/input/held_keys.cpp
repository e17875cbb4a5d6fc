#include "service/input/held_keys.h"

#include <algorithm>

namespace kvn::service {
namespace {

// A key without meaning. A press of it while Alt or Windows is down keeps their release from opening a menu.
constexpr WORD kMaskKey = 0xE8;

bool IsDown(WORD key) {
    return (GetAsyncKeyState(key) & 0x8000) != 0;
}

bool IsDown(const ChordKey& key) {
    return IsDown(key.key) || (key.isEitherSide && IsDown(TwinOf(key.key)));
}

bool OpensMenu(WORD modifier) {
    return modifier == VK_LMENU || modifier == VK_RMENU || modifier == VK_LWIN || modifier == VK_RWIN;
}

void AddMask(InputBatch& batch) {
    batch.KeyDown(kMaskKey);
    batch.KeyUp(kMaskKey);
}

// The modifiers that are down and foreign to a chord. They go up for its press, and down again afterwards.
class LiftedModifiers {
public:
    explicit LiftedModifiers(const Chord& chord) {
        if (!chord.ArrivesAsNamed()) return;
        for (const WORD modifier : kModifiers) {
            if (chord.IsForeign(modifier) && IsDown(modifier)) modifiers[count++] = modifier;
        }
    }

    void AddLift(InputBatch& batch) const {
        AddMaskIfNeeded(batch);
        for (const WORD modifier : All()) batch.KeyUp(modifier);
    }

    // The user's own release of the key comes later, and must not open a menu either.
    void AddReturn(InputBatch& batch) const {
        for (const WORD modifier : All()) batch.KeyDown(modifier);
        AddMaskIfNeeded(batch);
    }

private:
    std::span<const WORD> All() const { return {modifiers.data(), count}; }
    void AddMaskIfNeeded(InputBatch& batch) const {
        if (std::ranges::any_of(All(), OpensMenu)) AddMask(batch);
    }

    std::array<WORD, kModifiers.size()> modifiers{};
    std::size_t count = 0;
};

// The modifiers of a chord that were left to the user, who has released them since.
HeldChord MissingModifiers(const HeldChord& held) {
    HeldChord missing;
    for (const ChordKey& key : held.chord.Keys()) {
        const bool wasLeftToUser = std::ranges::find(held.Keys(), key.key) == held.Keys().end();
        if (IsModifier(key.key) && wasLeftToUser && !IsDown(key)) missing.Add(key.key);
    }
    return missing;
}

HeldChord PartOf(const HeldChord& held, bool areModifiers) {
    HeldChord part{.chord = held.chord};
    for (const WORD key : held.Keys()) {
        if (IsModifier(key) == areModifiers) part.Add(key);
    }
    return part;
}

}  // namespace

HeldChord HeldKeys::Press(const Chord& chord) {
    const LiftedModifiers lifted(chord);
    InputBatch batch;
    lifted.AddLift(batch);
    const HeldChord held = AddPress(chord, batch);
    lifted.AddReturn(batch);
    batch.Send();
    return held;
}

void HeldKeys::Repeat(const HeldChord& held) {
    const WORD key = held.chord.LastPlainKey();
    if (key == 0) return;
    const LiftedModifiers lifted(held.chord);
    const HeldChord missing = MissingModifiers(held);
    InputBatch batch;
    lifted.AddLift(batch);
    for (const WORD modifier : missing.Keys()) batch.KeyDown(modifier);
    batch.KeyDown(key);
    for (const WORD modifier : missing.Keys()) batch.KeyUp(modifier);
    lifted.AddReturn(batch);
    batch.Send();
}

bool HeldKeys::Release(const HeldChord& held) {
    InputBatch batch;
    AddUps(held, batch);
    if (!batch.Send()) return false;
    Forget(held);
    return true;
}

void HeldKeys::LeaveToUser(HeldChord& held) {
    Forget(held);
    held = {};
}

void HeldKeys::Tap(const Chord& chord) {
    const LiftedModifiers lifted(chord);
    InputBatch batch;
    lifted.AddLift(batch);
    const HeldChord held = AddPress(chord, batch);
    AddUps(held, batch);
    lifted.AddReturn(batch);
    batch.Send();
    Forget(held);
}

HeldChord HeldKeys::PressAndKeepModifiers(const Chord& chord) {
    const LiftedModifiers lifted(chord);
    InputBatch batch;
    lifted.AddLift(batch);
    const HeldChord held = AddPress(chord, batch);
    const HeldChord plain = PartOf(held, false);
    AddUps(plain, batch);
    lifted.AddReturn(batch);
    batch.Send();
    Forget(plain);
    return PartOf(held, true);
}

HeldChord HeldKeys::PressButton(WORD button) {
    InputBatch batch;
    HeldChord held;
    AddDown(button, batch);
    held.Add(button);
    batch.Send();
    return held;
}

void HeldKeys::Click(WORD button) {
    InputBatch batch;
    HeldChord held;
    AddDown(button, batch);
    held.Add(button);
    AddUps(held, batch);
    batch.Send();
    Forget(held);
}

HeldChord HeldKeys::AddPress(const Chord& chord, InputBatch& batch) {
    HeldChord held{.chord = chord};
    for (const ChordKey& key : chord.Keys()) {
        if (IsModifier(key.key) && IsHeldByUser(key)) continue;
        AddDown(key.key, batch);
        held.Add(key.key);
    }
    return held;
}

// If another control already holds a plain key, it is pressed again, like a repeating key.
void HeldKeys::AddDown(WORD key, InputBatch& batch) {
    const bool isFirst = list.counts[key].fetch_add(1) == 0;
    if (!IsMouseButton(key)) {
        if (isFirst || !IsModifier(key)) batch.KeyDown(key);
    } else if (isFirst) {
        pressedButtons[key] = PhysicalButton(key);
        batch.ButtonDown(pressedButtons[key]);
    }
}

void HeldKeys::AddUp(WORD key, InputBatch& batch) {
    if (IsMouseButton(key)) {
        batch.ButtonUp(pressedButtons[key]);
    } else {
        batch.KeyUp(key);
    }
}

void HeldKeys::AddUps(const HeldChord& held, InputBatch& batch) {
    const auto keys = held.Keys();
    std::for_each(keys.rbegin(), keys.rend(), [&](WORD key) {
        if (list.counts[key].load() <= 1) AddUp(key, batch);
    });
}

void HeldKeys::Forget(const HeldChord& held) {
    for (const WORD key : held.Keys()) {
        if (list.counts[key].load() != 0) list.counts[key].fetch_sub(1);
    }
}

bool HeldKeys::IsHeldByUser(const ChordKey& key) const {
    return IsHeldByUser(key.key) || (key.isEitherSide && IsHeldByUser(TwinOf(key.key)));
}

bool HeldKeys::IsHeldByUser(WORD key) const {
    return list.counts[key].load() == 0 && IsDown(key);
}

}  // namespace kvn::service

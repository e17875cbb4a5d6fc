// Presses and releases keys and buttons, and counts their holders. One thread at a time uses it.
//
// The watcher shares the list. A key is counted before its press is sent and until after its release is sent, so every
// key that is down when the service is killed is in the list.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <span>

#include "service/input/chord.h"
#include "service/input/held_list.h"
#include "service/input/key_sending.h"

namespace kvn::service {

// The keys that one control holds down, in the order of the presses, except those that the user already holds.
struct HeldChord {
    Chord chord{};  // as named in the settings
    std::array<WORD, 3> keys{};
    std::size_t count = 0;

    std::span<const WORD> Keys() const { return {keys.data(), count}; }
    void Add(WORD key) { keys[count++] = key; }
};

class HeldKeys {
public:
    explicit HeldKeys(HeldList& sharedList) : list(sharedList) {}

    HeldChord Press(const Chord& chord);
    // Presses the last plain key again, as a keyboard does while a key is held.
    static void Repeat(const HeldChord& held);
    // False if Windows accepts no input; then everything is still held.
    [[nodiscard]] bool Release(const HeldChord& held);
    // Leaves it down: the user holds it too, and will release it.
    void LeaveToUser(HeldChord& held);
    // Presses and releases the chord in one piece.
    void Tap(const Chord& chord);
    // Presses the whole chord, and releases its plain keys.
    HeldChord PressAndKeepModifiers(const Chord& chord);

    HeldChord PressButton(WORD button);
    void Click(WORD button);

private:
    HeldChord AddPress(const Chord& chord, InputBatch& batch);
    void AddDown(WORD key, InputBatch& batch);
    void AddUp(WORD key, InputBatch& batch);
    void AddUps(const HeldChord& held, InputBatch& batch);
    void Forget(const HeldChord& held);
    bool IsHeldByUser(const ChordKey& key) const;
    bool IsHeldByUser(WORD key) const;

    HeldList& list;
    // By VK_LBUTTON to VK_XBUTTON2: the physical button that was pressed. The user may swap the buttons before its
    // release.
    std::array<WORD, VK_XBUTTON2 + 1> pressedButtons{};
};

}  // namespace kvn::service

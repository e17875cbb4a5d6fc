// The keys of one function: which of them are modifiers, and which other modifiers must be lifted for them.
//
// A modifier that is named without its side (Shift, Ctrl, Alt) is pressed as the left one, and counts as held if the
// user holds either of the two. One that is named with its side counts as held only if the user holds exactly that key.
// The same modifier on the other side never matters: programs see one modifier.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>
#include <span>

#include "model/key_names.h"

namespace kvn::service {

// The eight keys that count as modifiers: both Shift, Ctrl, Alt and Windows keys.
inline constexpr std::array<WORD, 8> kModifiers{VK_LSHIFT, VK_RSHIFT, VK_LCONTROL, VK_RCONTROL,
                                                VK_LMENU,  VK_RMENU,  VK_LWIN,     VK_RWIN};

struct ChordKey {
    WORD key = 0;               // never a modifier without a side
    bool isEitherSide = false;  // the key was named without its side
};

class Chord {
public:
    Chord() = default;
    // Leaves out codes that name no key, and repeated keys.
    explicit Chord(std::span<const model::KeyCode> codes);

    std::span<const ChordKey> Keys() const { return {keys.data(), count}; }
    bool IsEmpty() const { return count == 0; }
    // Whether other modifiers that are down must be hidden from the program. Shift, Ctrl and Alt alone combine with the
    // keys that are held, as the real keys do.
    bool ArrivesAsNamed() const;
    // The last key that is not a modifier, or 0.
    WORD LastPlainKey() const;
    // Whether the modifier would change this chord into another if it is down.
    bool IsForeign(WORD modifier) const;

private:
    void Add(ChordKey added);

    std::array<ChordKey, 3> keys{};
    std::size_t count = 0;
};

bool IsModifier(WORD key);

// The same modifier on the other side; 0 for other keys.
WORD TwinOf(WORD modifier);

}  // namespace kvn::service

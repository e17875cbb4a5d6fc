// The platform of the tests. Where Wine and Windows differ, a test asks here and names the difference; it never assumes
// one or the other.
#pragma once

#include <cstddef>

namespace kvn::test {

// The number before the point of Wine's version; 0 on Windows.
int WineVersion();
inline bool RunsUnderWine() {
    return WineVersion() != 0;
}

// The differences between versions of Wine, one by one; docs/platforms.md lists them.

// The heap keeps small blocks in groups, and lists a group as one block.
inline bool HeapListsGroups() {
    return WineVersion() >= 9;
}

// The step by which a process's private memory grows, in bytes, whatever it asks for.
inline std::size_t StepOfPrivateMemory() {
    constexpr std::size_t kKibibyte = 1024;
    return WineVersion() >= 10 ? 8192 * kKibibyte : 0;
}

// The surface of a window may stay until a later window of the same program needs another one: three drawing objects,
// once and not for each window. On Wine 10 these are two bitmaps and a region of a layered window; on Wine 8 it
// sometimes happens on a busy machine.
inline std::size_t ObjectsKeptOfAWindow() {
    return RunsUnderWine() ? 3 : 0;
}

// A new program gets the resolution with which the session began.
inline bool SessionKeepsItsResolution() {
    return WineVersion() >= 10;
}

// A process that is killed during a press sometimes stays, with one thread that does not end.
inline bool KilledProcessesMayStay() {
    return WineVersion() >= 10;
}

// Whether keys of all users may be written; on Windows an administrator may.
bool MayWriteMachineKeys();

}  // namespace kvn::test

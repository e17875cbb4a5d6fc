// The platform of the tests. Where Wine and Windows differ, a test asks here and says what differs; it never takes the
// one or the other for granted.
#pragma once

#include <cstddef>

namespace kvn::test {

// The number before the point of Wine's version; 0 on Windows.
int WineVersion();
inline bool RunsUnderWine() {
    return WineVersion() != 0;
}

// Where the Wines differ, one by one; docs/platforms.md lists it.

// The heap keeps small blocks in groups, and lists a group as one block.
inline bool HeapListsGroups() {
    return WineVersion() >= 9;
}

// By how much a process's private memory grows at once, whatever it asks for, in bytes.
inline std::size_t StepOfPrivateMemory() {
    constexpr std::size_t kKibibyte = 1024;
    return WineVersion() >= 10 ? 8192 * kKibibyte : 0;
}

// What a window was painted on may stay until a later window of the same program needs another: three drawing objects,
// once and not for each window. On Wine 10 these are two bitmaps and a region of a layered window; on Wine 8 it happens
// now and then, on a busy machine.
inline std::size_t ObjectsKeptOfAWindow() {
    return RunsUnderWine() ? 3 : 0;
}

// A program that starts finds the resolution that the session began with.
inline bool SessionKeepsItsResolution() {
    return WineVersion() >= 10;
}

// A process that is killed at a press sometimes stays, with one thread that does not end.
inline bool KilledProcessesMayStay() {
    return WineVersion() >= 10;
}

// Whether keys of all users may be written; on Windows an administrator may.
bool MayWriteMachineKeys();

}  // namespace kvn::test

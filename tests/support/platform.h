// The platform of the tests. Where Wine and Windows differ, a test asks here and says what differs; it never takes the
// one or the other for granted.
#pragma once

namespace kvn::test {

// The number before the point of Wine's version; 0 on Windows.
int WineVersion();
inline bool RunsUnderWine() {
    return WineVersion() != 0;
}

// Whether keys of all users may be written; on Windows an administrator may.
bool MayWriteMachineKeys();

}  // namespace kvn::test

// The largest number of items in a user's list: profiles, programs of a profile, gestures of a profile.
#pragma once

namespace kvn::platform {

inline constexpr int kItemLimit = 100;

}  // namespace kvn::platform

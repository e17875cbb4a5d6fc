// How many items a list of the user's may have: profiles, programs of a profile, gestures of a profile.
#pragma once

namespace kvn::platform {

inline constexpr int kItemLimit = 100;

}  // namespace kvn::platform

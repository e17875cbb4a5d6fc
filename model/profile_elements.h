// The element names of the profile file that do not belong to a setting; those are in setting_field.h.
#pragma once

namespace kvn::model::element {

inline constexpr char kRoot[] = "data";
inline constexpr char kVid[] = "vid";
inline constexpr char kPid[] = "pid";
inline constexpr char kSelectProfile[] = "select_profile";
inline constexpr char kProfile[] = "profile";
inline constexpr char kProfileName[] = "profname";

inline constexpr char kApplication[] = "Application";
inline constexpr char kApplicationName[] = "name";
inline constexpr char kApplicationPath[] = "path";

inline constexpr char kGesture[] = "Gesture";
inline constexpr char kGestureStroke[] = "Key";
inline constexpr char kGestureFunction[] = "Function";
inline constexpr char kGestureMemo[] = "Memo";
inline constexpr char kGestureEtcKey[] = "EtcKey";

}  // namespace kvn::model::element

// The registry values that the page and the resident service exchange: keys, names and types.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "model/enum_array.h"

namespace kvn::model {

// Below HKEY_CURRENT_USER: the attached mouse, which the service publishes, and the keys of the mouse models.
inline constexpr wchar_t kBaseKey[] = L"Software\\KORVEN\\MouseUtility";
// Below HKEY_LOCAL_MACHINE: the machine-wide default of the wheel button, read only.
inline constexpr wchar_t kDefaultBindKey[] = L"Software\\KORVEN\\MouseUtility\\DefaultBindKey";
inline constexpr wchar_t kDefaultCenterValue[] = L"DefaultBindKey_Center";

// Registry types by their numbers in the Windows interface.
enum class RegistryType : std::uint32_t { String = 1, Dword = 4, MultiString = 7 };

// Index into kRegistryValues.
enum class RegistryValue : std::size_t {
    Vid,
    Pid,
    Mi,
    ProfileName,
    HasTilt,
    ButtonCount,
    Left,
    Right,
    Center,
    Button4,
    Button5,
    HorizontalScrollSpeed,
    MouseImage,
    TiltLeft,
    TiltRight,
    FlyingScrollSpeed,
    FlyingRevolutionSpeed,
    FlyingRevolutionCount,
    ProfileApp,
    Gesture,
    LeftEtcKey,
    RightEtcKey,
    CenterEtcKey,
    Button4EtcKey,
    Button5EtcKey,
    TiltLeftEtcKey,
    TiltRightEtcKey,
    MouseFlag,
};

struct RegistryValueRow {
    RegistryValue value;
    const wchar_t* name;
    RegistryType type;
};

inline constexpr std::array<RegistryValueRow, 28> kRegistryValues{{
    {RegistryValue::Vid, L"VID", RegistryType::Dword},
    {RegistryValue::Pid, L"PID", RegistryType::Dword},
    {RegistryValue::Mi, L"MI", RegistryType::Dword},
    {RegistryValue::ProfileName, L"ProfileName", RegistryType::String},
    {RegistryValue::HasTilt, L"HasTilt", RegistryType::Dword},
    {RegistryValue::ButtonCount, L"ButtonCount", RegistryType::Dword},
    {RegistryValue::Left, L"BindKeyLeft", RegistryType::Dword},
    {RegistryValue::Right, L"BindKeyRight", RegistryType::Dword},
    {RegistryValue::Center, L"BindKeyCenter", RegistryType::Dword},
    {RegistryValue::Button4, L"BindKeyMinus", RegistryType::Dword},
    {RegistryValue::Button5, L"BindKeyPlus", RegistryType::Dword},
    {RegistryValue::HorizontalScrollSpeed, L"HolizonScroll", RegistryType::Dword},
    {RegistryValue::MouseImage, L"MouseImage", RegistryType::String},
    {RegistryValue::TiltLeft, L"BindKeyTiltLeft", RegistryType::Dword},
    {RegistryValue::TiltRight, L"BindKeyTiltRight", RegistryType::Dword},
    {RegistryValue::FlyingScrollSpeed, L"BindKeyHSpeed", RegistryType::Dword},
    {RegistryValue::FlyingRevolutionSpeed, L"BindKeyHLotate", RegistryType::Dword},
    {RegistryValue::FlyingRevolutionCount, L"BindKeyHCount", RegistryType::Dword},
    {RegistryValue::ProfileApp, L"ProfileApp", RegistryType::MultiString},
    {RegistryValue::Gesture, L"Gesture", RegistryType::MultiString},
    {RegistryValue::LeftEtcKey, L"BindKeyLeft_etcKey", RegistryType::String},
    {RegistryValue::RightEtcKey, L"BindKeyRight_etcKey", RegistryType::String},
    {RegistryValue::CenterEtcKey, L"BindKeyCenter_etcKey", RegistryType::String},
    {RegistryValue::Button4EtcKey, L"BindKeyMinus_etcKey", RegistryType::String},
    {RegistryValue::Button5EtcKey, L"BindKeyPlus_etcKey", RegistryType::String},
    {RegistryValue::TiltLeftEtcKey, L"BindKeyTiltLeft_etcKey", RegistryType::String},
    {RegistryValue::TiltRightEtcKey, L"BindKeyTiltRight_etcKey", RegistryType::String},
    {RegistryValue::MouseFlag, L"MouseFlag", RegistryType::Dword},
}};

static_assert(IsInEnumOrder(kRegistryValues, [](const RegistryValueRow& row) { return row.value; }));

constexpr const RegistryValueRow& RowOf(RegistryValue value) {
    return kRegistryValues[static_cast<std::size_t>(value)];
}

// The name of a model: "VIDvvvvPIDpppp" with at least four lower-case hexadecimal digits each.
std::wstring MouseModelName(std::uint32_t vid, std::uint32_t pid);

// The ids as people look them up: "1234:5678".
std::wstring MouseIdsText(std::uint32_t vid, std::uint32_t pid);

// The key below HKEY_CURRENT_USER that holds a mouse model's settings: kBaseKey, a backslash and the mouse model's
// name; the base key itself when either id is 0.
std::wstring MouseModelKey(std::uint32_t vid, std::uint32_t pid);

}  // namespace kvn::model

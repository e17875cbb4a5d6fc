// The registry values that the page and the resident service exchange: keys, names and types.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kvn::model {

// Below HKEY_CURRENT_USER: what the service publishes about the attached mouse, and the per-model keys.
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
    const wchar_t* name;
    RegistryType type;
};

inline constexpr std::array<RegistryValueRow, 28> kRegistryValues{{
    {L"VID", RegistryType::Dword},
    {L"PID", RegistryType::Dword},
    {L"MI", RegistryType::Dword},
    {L"ProfileName", RegistryType::String},
    {L"HasTilt", RegistryType::Dword},
    {L"ButtonCount", RegistryType::Dword},
    {L"BindKeyLeft", RegistryType::Dword},
    {L"BindKeyRight", RegistryType::Dword},
    {L"BindKeyCenter", RegistryType::Dword},
    {L"BindKeyMinus", RegistryType::Dword},
    {L"BindKeyPlus", RegistryType::Dword},
    {L"HolizonScroll", RegistryType::Dword},
    {L"MouseImage", RegistryType::String},
    {L"BindKeyTiltLeft", RegistryType::Dword},
    {L"BindKeyTiltRight", RegistryType::Dword},
    {L"BindKeyHSpeed", RegistryType::Dword},
    {L"BindKeyHLotate", RegistryType::Dword},
    {L"BindKeyHCount", RegistryType::Dword},
    {L"ProfileApp", RegistryType::MultiString},
    {L"Gesture", RegistryType::MultiString},
    {L"BindKeyLeft_etcKey", RegistryType::String},
    {L"BindKeyRight_etcKey", RegistryType::String},
    {L"BindKeyCenter_etcKey", RegistryType::String},
    {L"BindKeyMinus_etcKey", RegistryType::String},
    {L"BindKeyPlus_etcKey", RegistryType::String},
    {L"BindKeyTiltLeft_etcKey", RegistryType::String},
    {L"BindKeyTiltRight_etcKey", RegistryType::String},
    {L"MouseFlag", RegistryType::Dword},
}};

constexpr const RegistryValueRow& RowOf(RegistryValue value) {
    return kRegistryValues[static_cast<std::size_t>(value)];
}

// A model's own name: "VIDvvvvPIDpppp" with at least four lower-case hexadecimal digits each.
std::wstring ModelName(std::uint32_t vid, std::uint32_t pid);

// The key below HKEY_CURRENT_USER that holds a model's settings: kBaseKey, a backslash and the model's name; the base
// key itself when either id is 0.
std::wstring ModelKey(std::uint32_t vid, std::uint32_t pid);

}  // namespace kvn::model

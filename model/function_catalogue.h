// The functions that a mouse control or a gesture can have: their codes, their texts, and where each is offered.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "resources/resource.h"

namespace kvn::model {

// The number under which a function is stored: 0 to 54, kAbnormalValue or kUnsetValue.
using FunctionCode = std::int32_t;

inline constexpr FunctionCode kMaxFunctionCode = 54;

// A stored value that was out of its range.
inline constexpr std::int32_t kAbnormalValue = -1;
// A value that was never set.
inline constexpr std::int32_t kUnsetValue = -2;

// Functions with a special role.
inline constexpr FunctionCode kFunctionNone = 0;
inline constexpr FunctionCode kFunctionLeftClick = 1;
inline constexpr FunctionCode kFunctionRightClick = 2;
inline constexpr FunctionCode kFunctionBack = 3;
inline constexpr FunctionCode kFunctionForward = 4;
inline constexpr FunctionCode kFunctionAutoScroll = 9;
inline constexpr FunctionCode kFunctionShift = 19;
inline constexpr FunctionCode kFunctionFlip3D = 31;
inline constexpr FunctionCode kFunctionLeftScroll = 33;
inline constexpr FunctionCode kFunctionRightScroll = 34;
inline constexpr FunctionCode kFunctionGesture = 36;
inline constexpr FunctionCode kFunctionArbitraryKey = 37;
inline constexpr FunctionCode kFunctionOff = 38;
inline constexpr FunctionCode kFirstCharmFunction = 39;
inline constexpr FunctionCode kLastCharmFunction = 54;

struct CatalogueRow {
    unsigned textId;
    FunctionCode code;
};

// In the order in which functions are offered. Codes 35, 46, 49, 50 and 52 are valid in storage but cannot be chosen.
inline constexpr std::array<CatalogueRow, 50> kFunctionCatalogue{{
    {IDS_FUNCTION_NONE, kFunctionNone},
    {IDS_FUNCTION_LEFT_CLICK, kFunctionLeftClick},
    {IDS_FUNCTION_RIGHT_CLICK, kFunctionRightClick},
    {IDS_FUNCTION_BACK, kFunctionBack},
    {IDS_FUNCTION_FORWARD, kFunctionForward},
    {IDS_FUNCTION_SWITCH_APPS, 5},
    {IDS_FUNCTION_CLOSE_WINDOW, 6},
    {IDS_FUNCTION_MAXIMIZE, 7},
    {IDS_FUNCTION_MINIMIZE, 8},
    {IDS_FUNCTION_AUTO_SCROLL, kFunctionAutoScroll},
    {IDS_FUNCTION_CTRL_C, 10},
    {IDS_FUNCTION_CTRL_X, 11},
    {IDS_FUNCTION_CTRL_V, 12},
    {IDS_FUNCTION_CTRL_Z, 13},
    {IDS_FUNCTION_CTRL_Y, 14},
    {IDS_FUNCTION_MY_COMPUTER, 15},
    {IDS_FUNCTION_ENTER, 16},
    {IDS_FUNCTION_ESC, 17},
    {IDS_FUNCTION_TAB, 18},
    {IDS_FUNCTION_SHIFT, kFunctionShift},
    {IDS_FUNCTION_ALT, 20},
    {IDS_FUNCTION_CTRL, 21},
    {IDS_FUNCTION_DELETE, 22},
    {IDS_FUNCTION_BACKSPACE, 23},
    {IDS_FUNCTION_CTRL_S, 24},
    {IDS_FUNCTION_START_BUTTON, 25},
    {IDS_FUNCTION_WEB_BROWSER, 26},
    {IDS_FUNCTION_EXPLORER, 27},
    {IDS_FUNCTION_CONTROL_PANEL, 28},
    {IDS_FUNCTION_PRINTERS, 29},
    {IDS_FUNCTION_DOUBLE_CLICK, 30},
    {IDS_FUNCTION_FLIP3D, kFunctionFlip3D},
    {IDS_FUNCTION_MAGNIFIER, 32},
    {IDS_FUNCTION_LEFT_SCROLL, kFunctionLeftScroll},
    {IDS_FUNCTION_RIGHT_SCROLL, kFunctionRightScroll},
    {IDS_FUNCTION_GESTURE, kFunctionGesture},
    {IDS_FUNCTION_ARBITRARY_KEY, kFunctionArbitraryKey},
    {IDS_FUNCTION_CHARMS, 53},
    {IDS_FUNCTION_SHARE_CHARM, 39},
    {IDS_FUNCTION_SETTINGS_CHARM, 40},
    {IDS_FUNCTION_DEVICES_CHARM, 41},
    {IDS_FUNCTION_SECOND_DISPLAY_CHARM, 42},
    {IDS_FUNCTION_SEARCH_CHARM, 43},
    {IDS_FUNCTION_EASE_OF_ACCESS, 44},
    {IDS_FUNCTION_SEARCH_SETTINGS, 45},
    {IDS_FUNCTION_APP_BAR, 47},
    {IDS_FUNCTION_NARRATOR, 48},
    {IDS_FUNCTION_APP_SWITCHER, 51},
    {IDS_FUNCTION_CYCLE_APPS, 54},
    {IDS_FUNCTION_OFF, kFunctionOff},
}};

// The string id of a function's text, or nothing for a code without a row.
std::optional<unsigned> TextIdOf(FunctionCode code);

// A version of Windows, as GetVersionExW reports it to the host program.
struct OsVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;

    friend bool operator==(const OsVersion&, const OsVersion&) = default;
};

// The functions that a button slot can choose from, in their order. slotIsOnMouse is false for a slot at or beyond the
// model's button count, which offers neither the gesture function nor Shift.
std::vector<CatalogueRow> FunctionsForSlot(OsVersion os, bool slotIsOnMouse);

// The functions that a gesture can run, in their order.
std::vector<CatalogueRow> FunctionsForGesture(OsVersion os);

}  // namespace kvn::model

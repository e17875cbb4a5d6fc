#include "service/engine/functions.h"

#include <algorithm>

namespace kvn::service {
namespace {

using model::ButtonSlot;
using model::KeyCode;
using model::kNoKey;

// Virtual-key codes of Windows; a letter's code is the letter itself.
constexpr KeyCode kBackspace = 0x08, kTab = 0x09, kEnter = 0x0D, kShift = 0x10, kCtrl = 0x11, kAlt = 0x12,
                  kEscape = 0x1B;
constexpr KeyCode kDelete = 0x2E, kWindows = 0x5B;

constexpr std::array kFunctions{
    FunctionRow{.code = 1, .kind = FunctionKind::Held, .action = Action::PressButton, .button = ButtonSlot::Left},
    FunctionRow{.code = 2, .kind = FunctionKind::Held, .action = Action::PressButton, .button = ButtonSlot::Right},
    FunctionRow{.code = 3, .kind = FunctionKind::Held, .action = Action::PressButton, .button = ButtonSlot::Button4},
    FunctionRow{.code = 4, .kind = FunctionKind::Held, .action = Action::PressButton, .button = ButtonSlot::Button5},
    FunctionRow{.code = 5, .kind = FunctionKind::Held, .action = Action::SwitchPrograms},
    FunctionRow{.code = 6, .kind = FunctionKind::Once, .action = Action::CloseWindow},
    FunctionRow{.code = 7, .kind = FunctionKind::Once, .action = Action::MaximizeWindow},
    FunctionRow{.code = 8, .kind = FunctionKind::Once, .action = Action::MinimizeWindow},
    FunctionRow{.code = 9, .kind = FunctionKind::Held, .action = Action::PressButton, .button = ButtonSlot::Center},
    FunctionRow{.code = 10, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kCtrl, 'C', kNoKey}},
    FunctionRow{.code = 11, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kCtrl, 'X', kNoKey}},
    FunctionRow{.code = 12, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kCtrl, 'V', kNoKey}},
    FunctionRow{.code = 13, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kCtrl, 'Z', kNoKey}},
    FunctionRow{.code = 14, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kCtrl, 'Y', kNoKey}},
    FunctionRow{.code = 15, .kind = FunctionKind::Once, .action = Action::Open, .program = Program::Computer},
    FunctionRow{
        .code = 16, .kind = FunctionKind::Repeats, .action = Action::PressKeys, .keys = {kEnter, kNoKey, kNoKey}},
    FunctionRow{
        .code = 17, .kind = FunctionKind::Repeats, .action = Action::PressKeys, .keys = {kEscape, kNoKey, kNoKey}},
    FunctionRow{.code = 18, .kind = FunctionKind::Repeats, .action = Action::PressKeys, .keys = {kTab, kNoKey, kNoKey}},
    FunctionRow{.code = 19, .kind = FunctionKind::Held, .action = Action::PressKeys, .keys = {kShift, kNoKey, kNoKey}},
    FunctionRow{.code = 20, .kind = FunctionKind::Held, .action = Action::PressKeys, .keys = {kAlt, kNoKey, kNoKey}},
    FunctionRow{.code = 21, .kind = FunctionKind::Held, .action = Action::PressKeys, .keys = {kCtrl, kNoKey, kNoKey}},
    FunctionRow{
        .code = 22, .kind = FunctionKind::Repeats, .action = Action::PressKeys, .keys = {kDelete, kNoKey, kNoKey}},
    FunctionRow{
        .code = 23, .kind = FunctionKind::Repeats, .action = Action::PressKeys, .keys = {kBackspace, kNoKey, kNoKey}},
    FunctionRow{.code = 24, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kCtrl, 'S', kNoKey}},
    FunctionRow{
        .code = 25, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, kNoKey, kNoKey}},
    FunctionRow{.code = 26, .kind = FunctionKind::Once, .action = Action::Open, .program = Program::Browser},
    FunctionRow{.code = 27, .kind = FunctionKind::Once, .action = Action::Open, .program = Program::Explorer},
    FunctionRow{.code = 28, .kind = FunctionKind::Once, .action = Action::Open, .program = Program::ControlPanel},
    FunctionRow{.code = 29, .kind = FunctionKind::Once, .action = Action::Open, .program = Program::Printers},
    FunctionRow{.code = 30, .kind = FunctionKind::Once, .action = Action::DoubleClick},
    FunctionRow{.code = 31, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, kTab, kNoKey}},
    FunctionRow{.code = 32, .kind = FunctionKind::Once, .action = Action::Open, .program = Program::Magnifier},
    FunctionRow{.code = 33, .kind = FunctionKind::Repeats, .action = Action::ScrollLeft},
    FunctionRow{.code = 34, .kind = FunctionKind::Repeats, .action = Action::ScrollRight},
    FunctionRow{.code = 36, .kind = FunctionKind::Gesture},
    FunctionRow{.code = 37, .kind = FunctionKind::Repeats, .action = Action::PressChosenKeys},
    FunctionRow{.code = 38, .kind = FunctionKind::Nothing},
    FunctionRow{.code = 39, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'H', kNoKey}},
    FunctionRow{.code = 40, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'I', kNoKey}},
    FunctionRow{.code = 41, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'K', kNoKey}},
    FunctionRow{.code = 42, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'P', kNoKey}},
    FunctionRow{.code = 43, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'S', kNoKey}},
    FunctionRow{.code = 44, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'U', kNoKey}},
    FunctionRow{.code = 45, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'W', kNoKey}},
    FunctionRow{.code = 47, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'Z', kNoKey}},
    FunctionRow{.code = 48, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, kCtrl, kEnter}},
    FunctionRow{.code = 51, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, kTab, kNoKey}},
    FunctionRow{.code = 53, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, 'C', kNoKey}},
    FunctionRow{.code = 54, .kind = FunctionKind::Once, .action = Action::PressKeys, .keys = {kWindows, kTab, kNoKey}},
};

}  // namespace

const FunctionRow* FindFunction(model::FunctionCode code) {
    const auto row = std::ranges::find(kFunctions, code, &FunctionRow::code);
    return row == kFunctions.end() ? nullptr : &*row;
}

FunctionKind KindOf(model::FunctionCode code) {
    const FunctionRow* const row = FindFunction(code);
    return row == nullptr ? FunctionKind::Natural : row->kind;
}

}  // namespace kvn::service

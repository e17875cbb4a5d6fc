#include "tests/service_end_to_end/expectations.h"
#include "tests/support/function_codes.h"

#include <algorithm>
#include <array>

namespace kvn::service_end_to_end {
namespace {

using model::ButtonSlot;
using model::FunctionCode;

// In the order of ButtonSlot.
constexpr std::array<const char*, 5> kButtonNames{"left", "right", "wheel", "back", "forward"};
constexpr std::array<FunctionCode, model::kButtonSlotCount> kNaturalFunctions{1, 2, 9, 3, 4, 33, 34};

Lines Button(const std::string& name, const char* what) {
    return {"sent " + name + ' ' + what};
}

Expectation HeldButton(FunctionCode code, const char* name) {
    return {code, Button(name, "down"), Button(name, "up")};
}

Expectation HeldKey(FunctionCode code, const std::string& name) {
    return {code, {"sent down " + name}, {"sent up " + name}};
}

Expectation WithCtrl(FunctionCode code, const std::string& key) {
    return {code, {"sent down Ctrl", "sent down " + key + " [Ctrl]", "sent up " + key + " [Ctrl]", "sent up Ctrl"}};
}

Expectation WithWindows(FunctionCode code, const std::string& key) {
    return {code,
            {"sent down Left Windows extended", "sent down " + key + " [Win]", "sent up " + key + " [Win]",
             "sent up Left Windows extended"}};
}

Expectation Command(FunctionCode code, const std::string& name) {
    return {code, {"posted " + name}};
}

Expectation Opens(FunctionCode code, const std::string& program, const std::string& argument) {
    return {.code = code, .opened = program, .argument = argument};
}

Expectation Scroll(FunctionCode code, const std::string& amount) {
    return {.code = code, .atPress = {"sent hwheel " + amount}, .maySendMore = true};
}

const std::vector<Expectation>& Table() {
    static const std::vector<Expectation> kTable{
        HeldButton(1, "left"),
        HeldButton(2, "right"),
        HeldButton(3, "back"),
        HeldButton(4, "forward"),
        {5, {"sent down Alt", "sent down Tab [Alt]", "sent up Tab [Alt]"}, {"sent up Alt"}},
        Command(6, "SC_CLOSE"),
        Command(7, "SC_MAXIMIZE"),
        Command(8, "SC_MINIMIZE"),
        HeldButton(9, "wheel"),
        WithCtrl(10, "C"),
        WithCtrl(11, "X"),
        WithCtrl(12, "V"),
        WithCtrl(13, "Z"),
        WithCtrl(14, "Y"),
        Opens(15, "explorer.exe", "MyComputerFolder"),
        HeldKey(16, "Enter"),
        HeldKey(17, "Esc"),
        HeldKey(18, "Tab"),
        HeldKey(19, "Shift"),
        HeldKey(20, "Alt"),
        HeldKey(21, "Ctrl"),
        HeldKey(22, "Delete extended"),
        HeldKey(23, "BackSpace"),
        WithCtrl(24, "S"),
        {25, {"sent down Left Windows extended", "sent up Left Windows extended"}},
        Opens(26, "browser.exe", ""),
        Opens(27, "explorer.exe", ""),
        Opens(28, "control.exe", ""),
        Opens(29, "explorer.exe", "PrintersFolder"),
        {30, {"sent left down", "sent left up", "sent left down", "sent left up"}},
        WithWindows(31, "Tab"),
        Opens(32, "magnify.exe", ""),
        Scroll(33, "-120"),
        Scroll(34, "120"),
        {37,
         {"sent down Ctrl", "sent down Shift [Ctrl]", "sent down K [Shift+Ctrl]"},
         {"sent up K [Shift+Ctrl]", "sent up Shift [Ctrl]", "sent up Ctrl"}},
        {38},
        WithWindows(39, "H"),
        WithWindows(40, "I"),
        WithWindows(41, "K"),
        WithWindows(42, "P"),
        WithWindows(43, "S"),
        WithWindows(44, "U"),
        WithWindows(45, "W"),
        WithWindows(47, "Z"),
        {48,
         {"sent down Left Windows extended", "sent down Ctrl [Win]", "sent down Enter [Ctrl+Win]",
          "sent up Enter [Ctrl+Win]", "sent up Ctrl [Win]", "sent up Left Windows extended"}},
        WithWindows(51, "Tab"),
        WithWindows(53, "C"),
        WithWindows(54, "Tab"),
    };
    return kTable;
}

Expectation Natural(FunctionCode code, ButtonSlot control) {
    if (control == ButtonSlot::TiltLeft) return {code, {"real hwheel -120"}};
    if (control == ButtonSlot::TiltRight) return {code, {"real hwheel 120"}};
    const std::string name = kButtonNames[static_cast<std::size_t>(control)];
    return {code, {"real " + name + " down"}, {"real " + name + " up"}};
}

// A press of the gesture button that draws nothing is a click in the end.
Expectation GestureThatDrawsNothing(ButtonSlot control) {
    const std::string name = kButtonNames[static_cast<std::size_t>(control)];
    return {test::kGesture, {}, {"sent " + name + " down", "sent " + name + " up"}};
}

// There is no release of a tilt, so everything happens at once.
Expectation AtOnce(Expectation expectation) {
    expectation.atPress.insert(expectation.atPress.end(), expectation.atRelease.begin(), expectation.atRelease.end());
    expectation.atRelease.clear();
    return expectation;
}

}  // namespace

const std::vector<FunctionCode>& AllFunctions() {
    static const std::vector<FunctionCode> kCodes = [] {
        std::vector<FunctionCode> codes{0, 35, test::kGesture, 52};
        for (const Expectation& row : Table()) codes.push_back(row.code);
        std::sort(codes.begin(), codes.end());
        return codes;
    }();
    return kCodes;
}

Expectation ExpectationOf(FunctionCode code, ButtonSlot control) {
    if (code == kNaturalFunctions[static_cast<std::size_t>(control)]) return Natural(code, control);
    if (code == test::kGesture && !IsTilt(control)) return GestureThatDrawsNothing(control);
    const auto row =
        std::find_if(Table().begin(), Table().end(), [&](const Expectation& entry) { return entry.code == code; });
    if (row == Table().end()) return Natural(code, control);
    return IsTilt(control) ? AtOnce(*row) : *row;
}

}  // namespace kvn::service_end_to_end

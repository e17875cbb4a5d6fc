// The input that must reach the program in front for each function of a control. The table is written from the user's
// documents, not from the service's table.
#pragma once

#include <string>
#include <vector>

#include "model/function_catalogue.h"
#include "model/setting_field.h"
#include "tests/service_end_to_end/recorder_driver.h"

namespace kvn::service_end_to_end {

struct Expectation {
    model::FunctionCode code = 0;
    Lines atPress{};
    Lines atRelease{};
    // The program that is opened, with a part of its arguments.
    std::string opened{};
    std::string argument{};
    bool maySendMore = false;  // the same line again, while the control is held
};

// The keys of function 37 in these tests, as the page stores them.
inline constexpr wchar_t kChosenKeys[] = L"Left Ctrl+Left Shift+K";

// One for each function that can be stored, and for two codes without a meaning.
const std::vector<model::FunctionCode>& AllFunctions();

Expectation ExpectationOf(model::FunctionCode code, model::ButtonSlot control);

inline bool IsTilt(model::ButtonSlot control) {
    return control == model::ButtonSlot::TiltLeft || control == model::ButtonSlot::TiltRight;
}

}  // namespace kvn::service_end_to_end

// The functions that tests use, by their codes.
#pragma once

#include "model/function_catalogue.h"

namespace kvn::test {

enum Function : model::FunctionCode {
    kLeftClick = 1,
    kRightClick = 2,
    kBackButton = 3,
    kForwardButton = 4,
    kSwitchPrograms = 5,
    kCloseWindow = 6,
    kMaximize = 7,
    kMinimize = 8,
    kMiddleClick = 9,
    kCopy = 10,
    kPaste = 12,
    kEnter = 16,
    kEscape = 17,
    kTab = 18,
    kShift = 19,
    kAlt = 20,
    kCtrl = 21,
    kDelete = 22,
    kWindows = 25,
    kDoubleClick = 30,
    kScrollLeft = 33,
    kScrollRight = 34,
    kGesture = 36,
    kKeys = 37,
    kOff = 38,
};

}  // namespace kvn::test

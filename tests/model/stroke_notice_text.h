// A notice as text: its kind and the letters of its directions.
#pragma once

#include <string>

#include "model/stroke_recogniser.h"

namespace kvn::model {

inline std::string Letters(const GestureNotice& notice) {
    std::string text;
    for (std::size_t i = 0; i < static_cast<std::size_t>(notice.count); ++i) {
        text += "-URDL"[static_cast<std::size_t>(notice.directions.at(i))];
    }
    return text;
}

inline std::string Describe(const GestureNotice& notice) {
    constexpr const char* kKinds[] = {"Started", "Completed", "Cancelled", "Progress"};
    return std::string(kKinds[static_cast<std::size_t>(notice.kind)]) + ' ' + Letters(notice);
}

}  // namespace kvn::model

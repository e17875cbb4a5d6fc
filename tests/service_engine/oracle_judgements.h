// Small decisions that the parts of the engine's oracle share.
#pragma once

#include <cstdint>

#include "model/key_names.h"
#include "service/engine/engine_settings.h"

namespace kvn::service {

inline bool IsGood(std::int32_t value, std::int32_t low, std::int32_t high) {
    return value >= low && value <= high;
}

inline int SideOf(std::int64_t delta) {
    return delta < 0 ? -1 : 1;
}

inline bool IsFlyingOn(const EngineSettings& settings) {
    return IsGood(settings.flying.flicks, 1, 5);
}

inline int OrFive(std::int32_t value) {
    return IsGood(value, 1, 10) ? value : 5;
}

inline bool HasUsableKey(const model::EtcKey& keys) {
    for (const model::KeyCode code : keys.codes) {
        for (const auto& row : model::kKeyNameTable) {
            if (code != 0 && row.code == code) return true;
        }
    }
    return false;
}

inline model::FunctionCode NaturalCodeOf(model::ButtonSlot control) {
    using enum model::ButtonSlot;
    switch (control) {
        case Left:
            return 1;
        case Right:
            return 2;
        case Center:
            return 9;
        case Button4:
            return 3;
        case Button5:
            return 4;
        case TiltLeft:
            return 33;
        case TiltRight:
            return 34;
    }
    return 0;
}

}  // namespace kvn::service

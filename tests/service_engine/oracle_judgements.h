// Small judgements that the parts of the engine's oracle share.
#pragma once

#include <cstdint>

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

}  // namespace kvn::service

// The letters of strokes in the profile file and the registry: the same in every language.
#pragma once

#include <optional>

#include "model/stroke_recogniser.h"

namespace kvn::model {

// None for any other character.
StrokeDirection DirectionOfStoredLetter(wchar_t letter);

// Nothing for None.
std::optional<wchar_t> StoredLetterOf(StrokeDirection direction);

}  // namespace kvn::model

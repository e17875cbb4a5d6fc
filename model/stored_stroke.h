// The letters by which strokes are kept in profile file and registry: the same in every language.
#pragma once

#include <optional>

#include "model/stroke_recogniser.h"

namespace kvn::model {

// None for a character that is no stroke's letter.
StrokeDirection DirectionOfStoredLetter(wchar_t letter);

// Nothing for None.
std::optional<wchar_t> StoredLetterOf(StrokeDirection direction);

}  // namespace kvn::model

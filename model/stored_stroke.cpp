#include "model/stored_stroke.h"

#include <string_view>

namespace kvn::model {
namespace {

// In the order of StrokeDirection, from Up on.
constexpr std::wstring_view kLetters = L"URDL";

}  // namespace

StrokeDirection DirectionOfStoredLetter(wchar_t letter) {
    const std::size_t place = kLetters.find(letter);
    return place == std::wstring_view::npos ? StrokeDirection::None : static_cast<StrokeDirection>(place + 1);
}

std::optional<wchar_t> StoredLetterOf(StrokeDirection direction) {
    const auto place = static_cast<std::size_t>(direction) - 1;
    if (place >= kLetters.size()) return std::nullopt;
    return kLetters[place];
}

}  // namespace kvn::model

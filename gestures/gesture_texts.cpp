#include "gestures/gesture_texts.h"

#include <algorithm>

#include "platform/texts.h"

namespace kvn::gestures {

std::wstring StrokeText(HINSTANCE module, const model::GestureNotice& notice) {
    std::wstring text;
    std::for_each_n(notice.directions.begin(), notice.count, [&](model::StrokeDirection direction) {
        if (const auto letter = model::LetterIdOf(direction)) text += platform::LoadText(module, *letter);
    });
    return text;
}

std::wstring FunctionText(HINSTANCE module, const model::GestureEntry& gesture) {
    if (gesture.function == model::kFunctionArbitraryKey) {
        std::wstring keys = model::EtcKeyToText(gesture.etcKey);
        if (!keys.empty()) return keys;
    }
    const auto textId = model::TextIdOf(gesture.function);
    return textId ? platform::LoadText(module, *textId) : std::wstring();
}

}  // namespace kvn::gestures

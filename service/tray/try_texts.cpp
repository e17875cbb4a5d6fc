#include "service/tray/try_texts.h"

#include "model/enum_array.h"
#include "resources/resource.h"
#include "service/resources/service_resource.h"
#include "service/resources/service_texts.h"

namespace kvn::service {
namespace {

constexpr model::EnumArray<model::ButtonSlot, unsigned, model::kButtonSlotCount> kControlTexts{
    {IDS_TRY_LEFT, IDS_TRY_RIGHT, IDS_TRY_CENTER, IDS_TRY_BUTTON4, IDS_TRY_BUTTON5, IDS_TRY_TILT_LEFT,
     IDS_TRY_TILT_RIGHT}};

// In the order of Cause; 0: the function alone.
constexpr model::EnumArray<Cause, unsigned, 7> kEffectTexts{
    {0, IDS_TRY_GESTURE, IDS_TRY_UNKNOWN_STROKE, IDS_TRY_NO_STROKE, IDS_TRY_GIVEN_UP, IDS_TRY_GIVES_UP, IDS_TRY_ASKED}};

std::wstring FunctionText(const SeenPress& press) {
    const auto textId = model::TextIdOf(press.function);
    if (!textId || press.function == model::kFunctionNone) return Text(IDS_TRY_NOTHING);
    std::wstring name = Text(*textId);
    return press.function == model::kFunctionArbitraryKey ? model::ArbitraryKeyLabel(name, press.keys) : name;
}

std::wstring StrokeText(const SeenPress& press) {
    std::wstring text;
    for (const model::StrokeDirection direction : press.stroke) {
        if (const auto letter = model::LetterIdOf(direction)) text += Text(*letter);
    }
    return text;
}

}  // namespace

std::wstring ControlText(model::ButtonSlot control) {
    return Text(kControlTexts[control]);
}

std::wstring EffectText(const SeenPress& press) {
    const std::wstring function = FunctionText(press);
    if (press.isPaused) return Text(IDS_TRY_PAUSED, function);
    const unsigned textId = kEffectTexts[press.cause];
    return textId == 0 ? function : Text(textId, StrokeText(press), function);
}

std::wstring ProgramText(const std::wstring& path) {
    return path.substr(path.find_last_of(L'\\') + 1);
}

}  // namespace kvn::service

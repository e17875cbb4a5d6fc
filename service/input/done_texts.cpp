#include "service/input/done_texts.h"

#include <algorithm>
#include <array>

#include "model/enum_array.h"
#include "model/etc_key.h"

namespace kvn::service {
namespace {

constexpr model::EnumArray<model::ButtonSlot, const wchar_t*, model::kButtonSlotCount> kButtonTexts{
    {L"left button", L"right button", L"middle button", L"button 4", L"button 5", L"tilt left", L"tilt right"}};

struct TextRow {
    Action action;
    const wchar_t* text;
};

constexpr const wchar_t* kScrolledLeft = L"scrolled left";
constexpr const wchar_t* kScrolledRight = L"scrolled right";

constexpr std::array<TextRow, 4> kTexts{{
    {Action::SwitchPrograms, L"Alt+Tab"},
    {Action::DoubleClick, L"double click"},
    {Action::ScrollLeft, kScrolledLeft},
    {Action::ScrollRight, kScrolledRight},
}};

}  // namespace

std::wstring TextOfScroll(bool isToTheLeft) {
    return isToTheLeft ? kScrolledLeft : kScrolledRight;
}

std::wstring TextOfInput(const Order& order, const FunctionRow& row) {
    if (row.action == Action::PressChosenKeys) return model::EtcKeyToText(order.keys);
    if (row.action == Action::PressKeys) return model::EtcKeyToText({row.keys});
    if (row.action == Action::PressButton) return kButtonTexts[row.button];
    const auto text = std::ranges::find(kTexts, row.action, &TextRow::action);
    return text == kTexts.end() ? kNothingDone : text->text;
}

}  // namespace kvn::service

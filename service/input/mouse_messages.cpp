#include "service/input/mouse_messages.h"

#include <algorithm>
#include <array>

namespace kvn::service {
namespace {

using model::ButtonSlot;

struct MessageRow {
    WPARAM message = 0;
    MouseEventKind kind = MouseEventKind::Move;
    ButtonSlot control = ButtonSlot::Left;
};

constexpr std::array<MessageRow, 11> kMessages{{
    {WM_MOUSEMOVE, MouseEventKind::Move},
    {WM_LBUTTONDOWN, MouseEventKind::Press, ButtonSlot::Left},
    {WM_LBUTTONUP, MouseEventKind::Release, ButtonSlot::Left},
    {WM_RBUTTONDOWN, MouseEventKind::Press, ButtonSlot::Right},
    {WM_RBUTTONUP, MouseEventKind::Release, ButtonSlot::Right},
    {WM_MBUTTONDOWN, MouseEventKind::Press, ButtonSlot::Center},
    {WM_MBUTTONUP, MouseEventKind::Release, ButtonSlot::Center},
    {WM_XBUTTONDOWN, MouseEventKind::Press, ButtonSlot::Button4},
    {WM_XBUTTONUP, MouseEventKind::Release, ButtonSlot::Button4},
    {WM_MOUSEWHEEL, MouseEventKind::Wheel},
    {WM_MOUSEHWHEEL, MouseEventKind::Tilt},
}};

constexpr DWORD kInjectedFlags = LLMHF_INJECTED | LLMHF_LOWER_IL_INJECTED;

bool IsOfXButton(WPARAM message) {
    return message == WM_XBUTTONDOWN || message == WM_XBUTTONUP;
}

}  // namespace

std::optional<MouseEvent> EventOf(WPARAM message, const MSLLHOOKSTRUCT& details) {
    const auto row = std::ranges::find(kMessages, message, &MessageRow::message);
    if (row == kMessages.end()) return std::nullopt;
    MouseEvent event;
    event.kind = row->kind;
    event.control = row->control;
    const WORD data = HIWORD(details.mouseData);
    if (IsOfXButton(message) && data == XBUTTON2) event.control = ButtonSlot::Button5;
    if (IsOfXButton(message) && data != XBUTTON1 && data != XBUTTON2) return std::nullopt;
    event.delta = static_cast<std::int16_t>(data);
    event.place = {details.pt.x, details.pt.y};
    event.time = details.time;
    event.isInjected = (details.flags & kInjectedFlags) != 0;
    return event;
}

}  // namespace kvn::service

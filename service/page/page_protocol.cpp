#include "service/page/page_protocol.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "platform/service_protocol.h"
#include "service/page/window_numbers.h"

namespace kvn::service {
namespace {

using model::ButtonSlot;
using platform::ServiceButton;
using platform::ServiceMessage;

constexpr UINT kLookMilliseconds = 1'000;
constexpr UINT_PTR kLookTimer = static_cast<UINT_PTR>(Timer::GestureEdit);

struct ButtonRow {
    ServiceButton button;
    ButtonSlot slot;
};

constexpr std::array kButtons{
    ButtonRow{ServiceButton::Left, ButtonSlot::Left},       ButtonRow{ServiceButton::Right, ButtonSlot::Right},
    ButtonRow{ServiceButton::Center, ButtonSlot::Center},   ButtonRow{ServiceButton::Button4, ButtonSlot::Button4},
    ButtonRow{ServiceButton::Button5, ButtonSlot::Button5},
};

}  // namespace

struct PageProtocol::Row {
    ServiceMessage message;
    Handler handler;
};

const PageProtocol::Row PageProtocol::kRows[] = {
    {ServiceMessage::SettingsChanged, &PageProtocol::OnSettingsChanged},
    {ServiceMessage::Probe, &PageProtocol::OnProbe},
    {ServiceMessage::GestureEditBegin, &PageProtocol::OnGestureEditBegin},
    {ServiceMessage::GestureEditEnd, &PageProtocol::OnGestureEditEnd},
    {ServiceMessage::IsButtonHeld, &PageProtocol::OnIsButtonHeld},
};

std::optional<LRESULT> PageProtocol::OnMessage(const Message& message) {
    if (message.id == WM_TIMER && message.wParam == kLookTimer) {
        LookForThePage(message.window);
        return 0;
    }
    const auto row = std::ranges::find(kRows, static_cast<ServiceMessage>(message.id), &Row::message);
    if (row == std::end(kRows)) return std::nullopt;
    return (this->*row->handler)(message);
}

LRESULT PageProtocol::OnProbe(const Message& /*message*/) const {
    return outlets.isMouseKnown() ? 1 : platform::kProbeRefused;
}

LRESULT PageProtocol::OnSettingsChanged(const Message& /*message*/) const {
    outlets.onSettingsChanged();
    return 0;
}

LRESULT PageProtocol::OnGestureEditBegin(const Message& message) const {
    outlets.onGestureEditBegin();
    SetTimer(message.window, kLookTimer, kLookMilliseconds, nullptr);
    return 0;
}

LRESULT PageProtocol::OnGestureEditEnd(const Message& /*message*/) const {
    outlets.onGestureEditEnd();
    return 0;
}

LRESULT PageProtocol::OnIsButtonHeld(const Message& message) const {
    const auto row = std::ranges::find_if(
        kButtons, [&](const ButtonRow& each) { return static_cast<LPARAM>(each.button) == message.lParam; });
    return row != kButtons.end() && outlets.isButtonHeld(row->slot) ? 1 : 0;
}

// A killed page does not report the end of its editor.
void PageProtocol::LookForThePage(HWND window) const {
    if (outlets.isGestureEdited()) {
        if (outlets.isPageOpen()) return;
        outlets.onGestureEditForgotten();
    }
    KillTimer(window, kLookTimer);
}

}  // namespace kvn::service

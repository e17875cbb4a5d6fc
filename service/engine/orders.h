// The engine's orders to other threads. The engine decides; the others act.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "model/etc_key.h"
#include "model/function_catalogue.h"
#include "model/setting_field.h"
#include "model/stroke_recogniser.h"

namespace kvn::service {

// Identifies one beginning, until its End.
using Ticket = std::uint32_t;

enum class OrderKind : std::uint8_t {
    // For the worker, in order.
    Begin,   // `function` begins with `ticket`; an End follows
    Act,     // `function` is carried out once: a held function begins and ends
    Scroll,  // one horizontal wheel report of `amount`
    Note,    // a press was kept without an action: for the log
    // For the keeper, which must not wait for the worker.
    End,          // what began with `ticket` ends
    StrokeBegin,  // at `place`
    StrokeMove,   // to `place`
    StrokeEnd,
    FlyBegin,  // notches of the wheel: the first rate is `amount` a second, negative is towards the user
    FlyEnd,
};

// Why a press was kept, for the log. The order of a press that was kept is one of Begin, Act, Scroll and Note, exactly
// once; the press of a gesture button has it at the stroke's end.
enum class Cause : std::uint8_t {
    Function,       // the control's function
    Gesture,        // a stroke that is in the list
    UnknownStroke,  // a stroke that is not
    NoStroke,       // no direction was reached: the control's natural click
    GivenUp,        // the stroke was cancelled
    GivesUp,        // the right button, which cancelled a stroke
    Asked,          // the page asks about the button, or a gesture is being recorded there
};

struct Order {
    OrderKind kind = OrderKind::Note;
    Cause cause = Cause::Function;
    model::ButtonSlot control = model::ButtonSlot::Left;
    bool isOfPress = true;                    // false: a further order of the same press or push
    model::FunctionCode controlFunction = 0;  // the control's own, for the log
    model::FunctionCode function = 0;         // the action
    model::EtcKey keys;                       // of function 37
    std::array<model::StrokeDirection, model::kMaxStrokeLength> stroke{};  // for the log
    Ticket ticket = 0;
    std::int32_t amount = 0;
    std::int32_t horizontalSpeed = 4;
    model::ScreenPoint place;
    std::uint32_t profile = 0;
    // Bit n: the user holds the button of slot n on another control, and the programs have seen its press.
    std::uint32_t passedButtons = 0;
};

// The orders of one event, without heap memory. One event never has more orders than fit.
class Orders {
public:
    void Add(const Order& order) {
        if (count < items.size()) items[count++] = order;
    }
    std::span<const Order> All() const { return {items.data(), count}; }
    void Clear() { count = 0; }

private:
    std::array<Order, 16> items{};
    std::size_t count = 0;
};

}  // namespace kvn::service

// Orders as texts, for expectations and failures.
#pragma once

#include <array>
#include <string>

#include "service/engine/orders.h"

namespace kvn::service {

inline std::string NameOf(model::ButtonSlot control) {
    static constexpr std::array kNames{"Left", "Right", "Center", "Button4", "Button5", "TiltLeft", "TiltRight"};
    return kNames[static_cast<std::size_t>(control)];
}

inline std::string NameOf(OrderKind kind) {
    static constexpr std::array kNames{"Begin",       "Act",        "Scroll",    "Note",     "End",
                                       "StrokeBegin", "StrokeMove", "StrokeEnd", "FlyBegin", "FlyEnd"};
    return kNames[static_cast<std::size_t>(kind)];
}

inline std::string NameOf(Cause cause) {
    static constexpr std::array kNames{"Function", "Gesture", "UnknownStroke", "NoStroke",
                                       "GivenUp",  "GivesUp", "Asked"};
    return kNames[static_cast<std::size_t>(cause)];
}

inline std::string TextOf(model::ScreenPoint place) {
    return std::to_string(place.x) + "," + std::to_string(place.y);
}

// The important fields of a press's order: "Begin Center 19 #1", "Act TiltLeft 16 again", "Note Button4 0 Asked".
inline std::string PressText(const Order& order) {
    std::string text = " " + NameOf(order.control) + " " + std::to_string(order.function);
    if (order.ticket != 0) text += " #" + std::to_string(order.ticket);
    if (order.kind == OrderKind::Scroll) text += " by " + std::to_string(order.amount);
    if (order.cause != Cause::Function) text += " " + NameOf(order.cause);
    if (!order.isOfPress && order.kind != OrderKind::End) text += " again";
    return text;
}

inline std::string TextOf(const Order& order) {
    const std::string name = NameOf(order.kind);
    if (order.kind <= OrderKind::End) return name + PressText(order);
    if (order.kind <= OrderKind::StrokeMove) return name + " " + TextOf(order.place);
    return order.kind == OrderKind::FlyBegin ? name + " " + std::to_string(order.amount) : name;
}

inline std::string TextOf(const Orders& orders) {
    std::string text;
    for (const Order& order : orders.All()) text += (text.empty() ? "" : "; ") + TextOf(order);
    return text;
}

// Every field, so that orders with the same text are equal.
inline std::string WholeTextOf(const Order& order) {
    std::string text = TextOf(order) + " | " + PressText(order) + " of " + std::to_string(order.controlFunction);
    for (const model::KeyCode code : order.keys.codes) text += " key " + std::to_string(code);
    for (const model::StrokeDirection step : order.stroke) text += " " + std::to_string(static_cast<int>(step));
    return text + " amount " + std::to_string(order.amount) + " speed " + std::to_string(order.horizontalSpeed) +
           " place " + TextOf(order.place) + " profile " + std::to_string(order.profile) + " beside " +
           std::to_string(order.passedButtons) + (order.isOfPress ? " of the press" : "");
}

}  // namespace kvn::service

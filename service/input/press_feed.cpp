#include "service/input/press_feed.h"

#include <algorithm>
#include <array>

#include "service/engine/functions.h"

namespace kvn::service {
namespace {

// The other causes describe the end of a stroke.
constexpr std::array kCausesOfPress{Cause::Function, Cause::GivesUp, Cause::Asked};

bool IsOfPress(const Order& order, model::ButtonSlot control) {
    const bool saysWhy = std::ranges::find(kCausesOfPress, order.cause) != kCausesOfPress.end();
    return order.isOfPress && order.control == control && saysWhy;
}

SeenPress Seen(const Order& order) {
    return {.control = order.control,
            .cause = order.cause,
            .function = order.function,
            .keys = order.keys,
            .stroke = order.stroke,
            .profile = order.profile};
}

}  // namespace

void PressFeed::Report(const Orders& orders) {
    if (!isWatched) return;
    for (const Order& order : orders.All()) {
        if (order.isOfPress) Put(Seen(order));
    }
}

void PressFeed::ReportPress(const DecidedPress& press, const Orders& itsOrders) {
    if (!isWatched) return;
    const auto isItsOwn = [&](const Order& order) { return IsOfPress(order, press.control); };
    if (std::ranges::any_of(itsOrders.All(), isItsOwn)) return;
    const bool passes = press.verdict == Verdict::Pass;
    Put({.control = press.control,
         .isPaused = press.isPaused,
         .function = passes ? NaturalFunctionOf(press.control) : model::kFunctionGesture,
         .profile = press.profile});
}

void PressFeed::Put(const SeenPress& press) {
    presses.Put(press);
    SetEvent(came.Get());
}

void PressFeed::Watch() {
    SeenPress old;
    while (presses.Take(old)) continue;
    isWatched = true;
}

}  // namespace kvn::service

#include "tests/service_engine/engine_input.h"

#include <array>

namespace kvn::service {
namespace {

using Telling = Verdict (*)(Engine&, const EngineInput&, Orders&);

template <auto Call>
Verdict TellOrders(Engine& engine, const EngineInput&, Orders& orders) {
    (engine.*Call)(orders);
    return Verdict::Pass;
}

template <auto Call>
Verdict TellSwitch(Engine& engine, const EngineInput& input, Orders&) {
    (engine.*Call)(input.isOn);
    return Verdict::Pass;
}

template <auto Call>
Verdict TellOnly(Engine& engine, const EngineInput&, Orders&) {
    (engine.*Call)();
    return Verdict::Pass;
}

Verdict TellMouse(Engine& engine, const EngineInput& input, Orders& orders) {
    MouseEvent event = input.mouse;
    event.time = static_cast<std::uint32_t>(input.time);
    return engine.OnMouse(event, orders);
}

Verdict TellSettings(Engine& engine, const EngineInput& input, Orders& orders) {
    engine.OnSettings(*input.settings, orders);
    return Verdict::Pass;
}

Verdict TellPause(Engine& engine, const EngineInput& input, Orders& orders) {
    engine.OnPause(input.isOn, orders);
    return Verdict::Pass;
}

Verdict TellQuestion(Engine& engine, const EngineInput& input, Orders&) {
    engine.OnQuestion(input.asked, static_cast<std::uint32_t>(input.time));
    return Verdict::Pass;
}

Verdict TellReleaseMissed(Engine& engine, const EngineInput& input, Orders& orders) {
    engine.OnReleaseMissed(input.asked, orders);
    return Verdict::Pass;
}

Verdict TellTick(Engine& engine, const EngineInput& input, Orders& orders) {
    engine.OnTick(input.cursor, orders);
    return Verdict::Pass;
}

// In the order of InputKind.
constexpr std::array<Telling, 13> kTellings{TellMouse,
                                            TellSettings,
                                            TellPause,
                                            TellOrders<&Engine::OnSessionLeft>,
                                            TellReleaseMissed,
                                            TellSwitch<&Engine::OnOverload>,
                                            TellSwitch<&Engine::OnSwapped>,
                                            TellOrders<&Engine::OnGestureEditBegin>,
                                            TellOnly<&Engine::OnGestureEditEnd>,
                                            TellOnly<&Engine::OnGestureEditForgotten>,
                                            TellQuestion,
                                            TellTick,
                                            TellOrders<&Engine::OnWindowInFront>};

}  // namespace

Verdict Tell(Engine& engine, const EngineInput& input, Orders& orders) {
    return kTellings[static_cast<std::size_t>(input.kind)](engine, input, orders);
}

}  // namespace kvn::service

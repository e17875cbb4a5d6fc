// Gives an engine and the oracle the same inputs; after each one both must give the same answer, and the promises must
// hold.
#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <string>

#include "tests/service_engine/engine_oracle.h"

namespace kvn::service {

// Checks the engine's answers against its promises, which do not depend on the rules.
class PromiseCheck {
public:
    // The broken promise; empty if there is none.
    std::string Check(const Engine& before, const Engine& after, const EngineInput& input, Verdict verdict,
                      const Orders& orders);

private:
    std::string CheckTickets(const EngineInput& input, const Orders& orders);
    std::string CheckReleases(const EngineInput& input, Verdict verdict);
    std::string CheckInjected(const Engine& before, const Engine& after, Verdict verdict, const Orders& orders) const;
    std::string CheckOneOrderForEachPress(const EngineInput& input, Verdict verdict, const Orders& orders) const;
    std::string CheckLeftClick(const Engine& engine, const EngineInput& input) const;
    std::string CheckFlight(const Orders& orders);
    int PhysicalOf(model::ButtonSlot control) const;

    struct Button {
        bool isDown = false;
        Verdict verdict = Verdict::Pass;
        Ticket ticket = 0;
    };

    EngineSettings settings;
    bool areSwapped = false;
    bool isFlying = false;
    std::array<Button, 5> buttons{};
    std::set<Ticket> used;
};

class EngineComparison {
public:
    // The difference, or the broken promise; empty if there is none.
    std::string Hear(const EngineInput& input);

    const Engine& Tested() const { return engine; }

private:
    std::string Compare(const EngineInput& input, const Engine& before);
    std::string CompareStates() const;

    Engine engine;
    EngineOracle oracle;
    PromiseCheck promises;
};

}  // namespace kvn::service

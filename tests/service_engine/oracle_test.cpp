// Random histories: the engine against the oracle.
//
// KVN_ENGINE_EVENTS sets another total number of inputs; KVN_ENGINE_SEED starts with others.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

#include "tests/service_engine/engine_comparison.h"
#include "tests/service_engine/input_maker.h"

namespace kvn::service {
namespace {

// The oracle looks back at the whole history, so it must not be long.
constexpr std::uint64_t kHistoryLength = 250;
constexpr std::uint64_t kUsualInputs = 20'000;

std::uint64_t NumberFrom(const char* variable, std::uint64_t otherwise) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

std::string TextOf(const EngineInput& input) {
    return "input of kind " + std::to_string(static_cast<int>(input.kind)) + ", event " +
           std::to_string(static_cast<int>(input.mouse.kind)) + " of control " +
           std::to_string(static_cast<int>(input.mouse.control)) + " by " + std::to_string(input.mouse.delta) + " at " +
           std::to_string(input.time);
}

TEST(OracleTest, TheEngineAgreesWithTheOracleAtEveryInput) {
    const std::uint64_t inputs = NumberFrom("KVN_ENGINE_EVENTS", kUsualInputs);
    const std::uint64_t seed = NumberFrom("KVN_ENGINE_SEED", 20'260);
    for (std::uint64_t history = 0; history < inputs / kHistoryLength; ++history) {
        std::mt19937_64 random(seed + history);
        InputMaker maker([&](std::uint32_t below) { return static_cast<std::uint32_t>(random() % below); });
        EngineComparison both;
        for (std::uint64_t index = 0; index < kHistoryLength; ++index) {
            const EngineInput input = maker.Next();
            const std::string broken = both.Hear(input);
            ASSERT_EQ(broken, "") << TextOf(input) << ", number " << index << " of seed " << seed + history;
        }
    }
}

// If nothing happened in the histories, the two would agree as well.
TEST(OracleTest, TheHistoriesReachEveryOrderAndEveryCause) {
    std::array<int, 10> kinds{};
    std::array<int, 7> causes{};
    for (std::uint64_t history = 0; history < 300; ++history) {
        std::mt19937_64 random(history);
        InputMaker maker([&](std::uint32_t below) { return static_cast<std::uint32_t>(random() % below); });
        Engine engine;
        for (std::uint64_t index = 0; index < kHistoryLength; ++index) {
            Orders orders;
            Tell(engine, maker.Next(), orders);
            for (const Order& order : orders.All()) {
                ++kinds[static_cast<std::size_t>(order.kind)];
                if (order.isOfPress) ++causes[static_cast<std::size_t>(order.cause)];
            }
        }
    }
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) EXPECT_GT(kinds[kind], 20) << "order of kind " << kind;
    for (std::size_t cause = 0; cause < causes.size(); ++cause) EXPECT_GT(causes[cause], 20) << "cause " << cause;
}

}  // namespace
}  // namespace kvn::service

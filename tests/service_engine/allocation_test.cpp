// No decision takes heap memory.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "tests/service_engine/counting_heap.h"
#include "tests/service_engine/input_maker.h"

namespace kvn::service {
namespace {

std::vector<EngineInput> RandomInputs(std::size_t count) {
    std::mt19937 random(1);
    InputMaker maker([&](std::uint32_t below) { return static_cast<std::uint32_t>(random() % below); });
    std::vector<EngineInput> inputs(count);
    for (EngineInput& input : inputs) input = maker.Next();
    return inputs;
}

TEST(AllocationTest, NoInputOfTheEngineTakesHeapMemory) {
    const std::vector<EngineInput> inputs = RandomInputs(20'000);
    Engine engine;
    Orders orders;
    std::size_t orderCount = 0;
    const std::uint64_t before = AllocationCount();
    for (const EngineInput& input : inputs) {
        orders.Clear();
        Tell(engine, input, orders);
        orderCount += orders.All().size();
    }
    EXPECT_EQ(AllocationCount() - before, 0U);
    EXPECT_GT(orderCount, 1'000U);
    EXPECT_GT(before, 0U);  // they are counted
}

}  // namespace
}  // namespace kvn::service

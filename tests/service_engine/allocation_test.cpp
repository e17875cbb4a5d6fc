// No decision takes heap memory.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <new>
#include <random>
#include <vector>

#include "tests/service_engine/input_maker.h"

namespace {

std::uint64_t allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace kvn::service {
namespace {

std::vector<EngineInput> RandomInputs(std::size_t count) {
    std::mt19937 random(1);
    InputMaker maker([&](std::uint32_t below) { return static_cast<std::uint32_t>(random() % below); });
    std::vector<EngineInput> inputs(count);
    for (EngineInput& input : inputs) input = maker.Next();
    return inputs;
}

TEST(AllocationTest, NothingThatTheEngineHearsTakesHeapMemory) {
    const std::vector<EngineInput> inputs = RandomInputs(5'000);
    Engine engine;
    Orders orders;
    std::size_t orderCount = 0;
    const std::uint64_t before = allocations;
    for (const EngineInput& input : inputs) {
        orders.Clear();
        Tell(engine, input, orders);
        orderCount += orders.All().size();
    }
    EXPECT_EQ(allocations - before, 0U);
    EXPECT_GT(orderCount, 500U);
    EXPECT_GT(before, 0U);  // they are counted
}

}  // namespace
}  // namespace kvn::service

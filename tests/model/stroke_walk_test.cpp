// Long random walks of the cursor: the recogniser against a second one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "model/stroke_recogniser.h"
#include "tests/model/stroke_notice_text.h"
#include "tests/model/stroke_oracle.h"

namespace kvn::model {
namespace {

constexpr int kSampleCount = 100'000;

// The largest move of the cursor from one sample to the next, along either axis.
struct Walk {
    const char* name;
    std::int32_t reach;
};

class StrokeWalkTest : public testing::TestWithParam<Walk> {};

std::int32_t Clamped(std::int64_t value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

TEST_P(StrokeWalkTest, AgreesWithTheOracleAtEverySample) {
    std::mt19937 random(20111);
    std::uniform_int_distribution<std::int32_t> step(-GetParam().reach, GetParam().reach);
    std::uniform_int_distribution<int> percent(0, 99);
    StrokeRecogniser recogniser;
    StrokeOracle oracle;
    ScreenPoint cursor;
    bool isHeld = false;
    int completed = 0;
    for (int i = 0; i < kSampleCount; ++i) {
        std::int32_t dx = step(random);
        std::int32_t dy = step(random);
        const int shape = percent(random);
        if (shape < 20) dx = 0;
        if (shape >= 20 && shape < 40) dy = 0;
        if (shape >= 40 && shape < 60) dy = shape % 2 == 0 ? dx : -dx;
        cursor = {Clamped(std::int64_t{cursor.x} + dx), Clamped(std::int64_t{cursor.y} + dy)};
        if (percent(random) < (isHeld ? 4 : 40)) isHeld = !isHeld;
        const bool isCancelHeld = percent(random) < 1;

        const auto notice = recogniser.Take({cursor, isHeld, isCancelHeld});
        const std::string expected = oracle.Take(cursor.x, cursor.y, isHeld, isCancelHeld);
        ASSERT_EQ(notice ? Describe(*notice) : "", expected) << "at sample " << i;
        completed += expected.starts_with("Completed ") ? 1 : 0;
    }
    EXPECT_GT(completed, 1000);
}

INSTANTIATE_TEST_SUITE_P(Reaches, StrokeWalkTest,
                         testing::Values(Walk{"Jitter", 20}, Walk{"Thresholds", 55}, Walk{"Hand", 200},
                                         Walk{"WholeDesktop", 30'000},
                                         Walk{"EveryNumber", std::numeric_limits<std::int32_t>::max()}),
                         [](const auto& walk) { return walk.param.name; });

}  // namespace
}  // namespace kvn::model

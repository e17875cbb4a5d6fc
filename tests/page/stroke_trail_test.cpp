// The path of a stroke, drawn into a picture.
#include "platform/stroke_trail.h"

#include <gtest/gtest.h>

#include "platform/device_context.h"
#include "platform/unique_resource.h"
#include "tests/support/owning_types.h"

namespace kvn::test {
namespace {

using platform::StrokeTrail;

constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kGround = RGB(5, 0, 0);
constexpr LONG kSize = 200;  // pixels

class StrokeTrailTest : public testing::Test {
protected:
    StrokeTrailTest() {
        SelectObject(context, bitmap.Get());
        platform::EraseTrailGround(context, {0, 0, kSize, kSize});
    }

    COLORREF At(int x, int y) const { return GetPixel(context, x, y); }
    int GreenPixels() const {
        int count = 0;
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) count += At(x, y) == kGreen ? 1 : 0;
        }
        return count;
    }

    StrokeTrail trail;

private:
    const platform::UniqueBitmap bitmap{CreateBitmap(kSize, kSize, 1, 32, nullptr)};
    const UniqueMemoryContext memory{CreateCompatibleDC(nullptr)};

protected:
    const HDC context = memory.Get();
};

TEST_F(StrokeTrailTest, TheBackgroundIsFilledToItsEdges) {
    for (const POINT corner : {POINT{0, 0}, POINT{kSize - 1, 0}, POINT{0, kSize - 1}, POINT{kSize - 1, kSize - 1}}) {
        EXPECT_EQ(At(corner.x, corner.y), kGround);
    }
}

TEST_F(StrokeTrailTest, TheWholePathIsDrawnThreePixelsWide) {
    trail.StartAt({20, 20});
    EXPECT_TRUE(trail.ExtendTo({120, 20}));
    EXPECT_TRUE(trail.ExtendTo({120, 120}));
    trail.Draw(context);
    for (const POINT place : {POINT{20, 20}, POINT{70, 19}, POINT{70, 21}, POINT{120, 70}, POINT{121, 70}}) {
        EXPECT_EQ(At(place.x, place.y), kGreen) << place.x << ' ' << place.y;
    }
    for (const POINT place : {POINT{70, 18}, POINT{70, 22}, POINT{70, 70}, POINT{120, 130}}) {
        EXPECT_EQ(At(place.x, place.y), kGround) << place.x << ' ' << place.y;
    }
}

TEST_F(StrokeTrailTest, ACursorThatDoesNotMoveDrawsNothing) {
    trail.Draw(context);
    trail.StartAt({20, 20});
    EXPECT_FALSE(trail.ExtendTo({20, 20}));
    trail.Draw(context);
    EXPECT_EQ(GreenPixels(), 0);
}

TEST_F(StrokeTrailTest, APathThatWasNotStartedBeginsWithItsFirstPoint) {
    EXPECT_FALSE(trail.ExtendTo({20, 20}));
    EXPECT_TRUE(trail.ExtendTo({60, 20}));
    trail.Draw(context);
    EXPECT_EQ(At(5, 5), kGround);
    EXPECT_EQ(At(40, 20), kGreen);
}

TEST_F(StrokeTrailTest, ANewStartForgetsTheOldPath) {
    trail.StartAt({20, 20});
    EXPECT_TRUE(trail.ExtendTo({120, 20}));
    trail.StartAt({20, 60});
    trail.Draw(context);
    EXPECT_EQ(GreenPixels(), 0);
    EXPECT_TRUE(trail.ExtendTo({120, 60}));
    trail.Clear();
    trail.Draw(context);
    EXPECT_EQ(GreenPixels(), 0);
}

TEST_F(StrokeTrailTest, ALongPathKeepsItsShapeAndBothEnds) {
    trail.StartAt({20, 20});
    // Around a square of 100 pixels again and again, with more points than are kept.
    POINT point{20, 20};
    for (std::size_t step = 0; step < 5 * StrokeTrail::kCapacity + 37; ++step) {
        const auto side = (step / 100) % 4;
        point.x += side == 0 ? 1 : side == 2 ? -1 : 0;
        point.y += side == 1 ? 1 : side == 3 ? -1 : 0;
        ASSERT_TRUE(trail.ExtendTo(point));
    }
    ASSERT_TRUE(trail.ExtendTo({70, 70}));
    trail.Draw(context);
    for (const POINT place :
         {POINT{20, 20}, POINT{70, 20}, POINT{120, 70}, POINT{70, 120}, POINT{20, 70}, POINT{70, 70}}) {
        EXPECT_EQ(At(place.x, place.y), kGreen) << place.x << ' ' << place.y;
    }
    EXPECT_EQ(At(40, 90), kGround);
}

}  // namespace
}  // namespace kvn::test

#include "model/stroke_recogniser.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/model/stroke_notice_text.h"

namespace kvn::model {
namespace {

// Feeds a recogniser and records its notices.
class Hand {
public:
    Hand& Hold(ScreenPoint point) { return Take(point, true, false); }
    Hand& Release(ScreenPoint point) { return Take(point, false, false); }
    Hand& Cancel(ScreenPoint point) { return Take(point, true, true); }
    Hand& MoveBy(std::int32_t dx, std::int32_t dy) { return Hold({cursor.x + dx, cursor.y + dy}); }
    Hand& Release() { return Release(cursor); }

    // Draws the letters in steps of 60 pixels, three for each segment: the first shows the turn, the second fixes the
    // direction, the third moves the anchor.
    Hand& Draw(const std::string& letters) {
        for (const char letter : letters) {
            const std::int32_t dx = letter == 'R' ? 60 : letter == 'L' ? -60 : 0;
            const std::int32_t dy = letter == 'D' ? 60 : letter == 'U' ? -60 : 0;
            MoveBy(dx, dy).MoveBy(dx, dy).MoveBy(dx, dy);
        }
        return *this;
    }

    const std::vector<std::string>& Notices() const { return notices; }
    std::string Stroke() const {
        const bool isComplete = !notices.empty() && notices.back().starts_with("Completed ");
        return isComplete ? notices.back().substr(10) : "nothing";
    }
    bool IsTracking() const { return recogniser.IsTracking(); }

private:
    Hand& Take(ScreenPoint point, bool isHeld, bool isCancelHeld) {
        cursor = point;
        if (const auto notice = recogniser.Take({point, isHeld, isCancelHeld})) notices.push_back(Describe(*notice));
        return *this;
    }

    StrokeRecogniser recogniser;
    ScreenPoint cursor;
    std::vector<std::string> notices;
};

using Notices = std::vector<std::string>;

TEST(StrokeRecogniserTest, AMoveOf49PixelsIsAnEmptyStroke) {
    Hand hand;
    hand.Hold({100, 100}).Hold({149, 100}).Release();
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Completed "}));
}

TEST(StrokeRecogniserTest, AMoveOf50PixelsFixesTheDirection) {
    Hand hand;
    hand.Hold({100, 100}).Hold({150, 100}).Release();
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Progress R", "Completed R"}));
}

TEST(StrokeRecogniserTest, SlowMovesAddUpFromTheStartOfTheSegment) {
    Hand hand;
    hand.Hold({0, 0});
    for (std::int32_t x = 1; x <= 50; ++x) hand.Hold({x, 0});
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Progress R"}));
}

TEST(StrokeRecogniserTest, ProgressCarriesTheFinishedSegmentsAndTheNewOne) {
    Hand hand;
    hand.Hold({500, 500}).Draw("RU").Release();
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Progress R", "Progress RU", "Completed RU"}));
}

TEST(StrokeRecogniserTest, ProgressComesOncePerSegment) {
    Hand hand;
    hand.Hold({500, 500}).Draw("RRRR").Release();
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Progress R", "Completed R"}));
}

TEST(StrokeRecogniserTest, EachStrokeOfUpToFourSegmentsIsReadBack) {
    for (const std::string stroke : {"U", "R", "D", "L", "UR", "DLDR", "RDRU", "LRLR", "UDUD", "DRUL"}) {
        Hand hand;
        hand.Hold({0, 0}).Draw(stroke).Release();
        EXPECT_EQ(hand.Stroke(), stroke);
    }
}

TEST(StrokeRecogniserTest, FiveSegmentsYieldTheLastFour) {
    Hand hand;
    hand.Hold({0, 0}).Draw("RULDR").Release();
    EXPECT_EQ(hand.Stroke(), "ULDR");
}

TEST(StrokeRecogniserTest, ProgressNeverCarriesMoreThanFourDirections) {
    Hand hand;
    hand.Hold({0, 0}).Draw("RULDRUL").Release();
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Progress R", "Progress RU", "Progress RUL", "Progress RULD",
                                       "Progress ULDR", "Progress LDRU", "Progress DRUL", "Completed DRUL"}));
}

TEST(StrokeRecogniserTest, AFifthSegmentThatIsNotFixedLeavesThreeLetters) {
    Hand hand;
    hand.Hold({0, 0}).Draw("RULD").MoveBy(60, 0).Release();
    EXPECT_EQ(hand.Stroke(), "ULD");
}

TEST(StrokeRecogniserTest, ANewSegmentStartsAtTheSampleThatNoticedTheTurn) {
    Hand hand;
    // The turn is noticed at (120, -60), from where 50 more pixels fix "up".
    hand.Hold({0, 0}).Hold({60, 0}).Hold({120, 0}).Hold({120, -60}).Hold({120, -109}).Release();
    EXPECT_EQ(hand.Stroke(), "R");
    Hand further;
    further.Hold({0, 0}).Hold({60, 0}).Hold({120, 0}).Hold({120, -60}).Hold({120, -110}).Release();
    EXPECT_EQ(further.Stroke(), "RU");
}

TEST(StrokeRecogniserTest, TheAnchorStaysWhereTheSegmentBeganUntilTheNextEvaluatedSample) {
    Hand hand;
    // From (50, 0), (50, 50) is straight down; from the start it is a diagonal, which counts as horizontal.
    hand.Hold({0, 0}).Hold({50, 0}).Hold({50, 50}).Hold({50, 100}).Release();
    EXPECT_EQ(hand.Stroke(), "R");
}

TEST(StrokeRecogniserTest, SamplesNearTheAnchorChangeNothing) {
    Hand hand;
    hand.Hold({0, 0}).Hold({100, 0}).Hold({200, 0}).Hold({200, 49}).Hold({200, -49}).Hold({151, 0}).Release();
    EXPECT_EQ(hand.Stroke(), "R");
}

TEST(StrokeRecogniserTest, AStrokeStartsOnlyWhenTheButtonGoesDown) {
    Hand hand;
    hand.Release({0, 0}).Release({100, 0});
    EXPECT_TRUE(hand.Notices().empty());
    hand.Hold({100, 0}).Release().Hold({100, 0});
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Completed ", "Started "}));
}

TEST(StrokeRecogniserTest, AButtonHeldAtTheFirstSampleStartsAtOnce) {
    Hand hand;
    hand.Hold({0, 0});
    EXPECT_EQ(hand.Notices(), (Notices{"Started "}));
}

TEST(StrokeRecogniserTest, TheCancelButtonCancelsTheStroke) {
    Hand hand;
    hand.Hold({0, 0}).Draw("RU").Cancel({0, 0});
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Progress R", "Progress RU", "Cancelled "}));
    EXPECT_FALSE(hand.IsTracking());
}

TEST(StrokeRecogniserTest, AfterACancelTheHeldButtonStartsNothing) {
    Hand hand;
    hand.Hold({0, 0}).Cancel({0, 0}).Hold({100, 0}).Hold({200, 0});
    EXPECT_EQ(hand.Notices().back(), "Cancelled ");
}

TEST(StrokeRecogniserTest, TheCancelButtonDoesNotMatterBeforeAStroke) {
    Hand hand;
    hand.Cancel({0, 0});
    EXPECT_EQ(hand.Notices(), (Notices{"Started "}));
}

TEST(StrokeRecogniserTest, CancelWinsOverRelease) {
    StrokeRecogniser recogniser;
    recogniser.Take({{0, 0}, true, false});
    const auto notice = recogniser.Take({{0, 0}, false, true});
    ASSERT_TRUE(notice);
    EXPECT_EQ(notice->kind, GestureNoticeKind::Cancelled);
    EXPECT_EQ(notice->count, 0);
}

TEST(StrokeRecogniserTest, CoordinatesMayBeNegative) {
    Hand hand;
    hand.Hold({-1900, -20}).Draw("LURD").Release();
    EXPECT_EQ(hand.Stroke(), "LURD");
}

TEST(StrokeRecogniserTest, TheWidestJumpsAreTakenToo) {
    constexpr std::int32_t kLow = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();
    Hand hand;
    hand.Hold({kLow, kLow}).Hold({kHigh, kLow}).Hold({kHigh, kHigh}).Hold({kLow, kLow}).Release();
    EXPECT_EQ(hand.Notices(), (Notices{"Started ", "Progress R", "Completed R"}));
    Hand down;
    down.Hold({kHigh, kLow}).Hold({kHigh, kHigh}).Release();
    EXPECT_EQ(down.Stroke(), "D");
}

TEST(StrokeDirectionTest, ExactDiagonalsAreHorizontal) {
    EXPECT_EQ(DirectionBetween({0, 0}, {70, 70}), StrokeDirection::Right);
    EXPECT_EQ(DirectionBetween({0, 0}, {70, -70}), StrokeDirection::Right);
    EXPECT_EQ(DirectionBetween({0, 0}, {-70, 70}), StrokeDirection::Left);
    EXPECT_EQ(DirectionBetween({0, 0}, {-70, -70}), StrokeDirection::Left);
}

TEST(StrokeDirectionTest, OnePixelBeyondTheDiagonalIsVertical) {
    EXPECT_EQ(DirectionBetween({0, 0}, {70, 71}), StrokeDirection::Down);
    EXPECT_EQ(DirectionBetween({0, 0}, {-70, 71}), StrokeDirection::Down);
    EXPECT_EQ(DirectionBetween({0, 0}, {70, -71}), StrokeDirection::Up);
    EXPECT_EQ(DirectionBetween({0, 0}, {-70, -71}), StrokeDirection::Up);
}

TEST(StrokeDirectionTest, TheAxesAndTheSamePoint) {
    EXPECT_EQ(DirectionBetween({5, 5}, {5, 6}), StrokeDirection::Down);
    EXPECT_EQ(DirectionBetween({5, 5}, {5, 4}), StrokeDirection::Up);
    EXPECT_EQ(DirectionBetween({5, 5}, {6, 5}), StrokeDirection::Right);
    EXPECT_EQ(DirectionBetween({5, 5}, {4, 5}), StrokeDirection::Left);
    EXPECT_EQ(DirectionBetween({5, 5}, {5, 5}), StrokeDirection::None);
}

TEST(StrokeDistanceTest, IsRoundedDown) {
    EXPECT_EQ(DistanceBetween({0, 0}, {30, 40}), 50);
    EXPECT_EQ(DistanceBetween({0, 0}, {30, 39}), 49);
    EXPECT_EQ(DistanceBetween({0, 0}, {49, 9}), 49);   // 49.82
    EXPECT_EQ(DistanceBetween({0, 0}, {49, 10}), 50);  // 50.01
    EXPECT_EQ(DistanceBetween({-1, -1}, {-1, -1}), 0);
}

TEST(StrokeLetterTest, EachDirectionHasItsString) {
    EXPECT_EQ(LetterIdOf(StrokeDirection::Up), unsigned{IDS_STROKE_UP});
    EXPECT_EQ(LetterIdOf(StrokeDirection::Right), unsigned{IDS_STROKE_RIGHT});
    EXPECT_EQ(LetterIdOf(StrokeDirection::Down), unsigned{IDS_STROKE_DOWN});
    EXPECT_EQ(LetterIdOf(StrokeDirection::Left), unsigned{IDS_STROKE_LEFT});
    EXPECT_EQ(LetterIdOf(StrokeDirection::None), std::nullopt);
}

}  // namespace
}  // namespace kvn::model

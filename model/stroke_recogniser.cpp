#include "model/stroke_recogniser.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "resources/resource.h"

namespace kvn::model {
namespace {

// In pixels: the distance that fixes a segment's first direction, and the one that confirms or changes the current one.
constexpr std::int64_t kFirstThreshold = 50;
constexpr std::int64_t kNextThreshold = 50;

constexpr double kDiagonal = std::numbers::pi / 4;

// In the order of StrokeDirection, from Up on.
constexpr std::array<unsigned, 4> kLetters{IDS_STROKE_UP, IDS_STROKE_RIGHT, IDS_STROKE_DOWN, IDS_STROKE_LEFT};

// Wider than the coordinates, so that no difference overflows.
struct Difference {
    std::int64_t x;
    std::int64_t y;
};

Difference DifferenceBetween(ScreenPoint from, ScreenPoint to) {
    return {std::int64_t{to.x} - from.x, std::int64_t{to.y} - from.y};
}

}  // namespace

std::optional<unsigned> LetterIdOf(StrokeDirection direction) {
    const auto index = static_cast<std::size_t>(direction) - 1;
    if (index >= kLetters.size()) return std::nullopt;
    return kLetters[index];
}

std::int64_t DistanceBetween(ScreenPoint from, ScreenPoint to) {
    const Difference difference = DifferenceBetween(from, to);
    const auto dx = static_cast<double>(difference.x);
    const auto dy = static_cast<double>(difference.y);
    return static_cast<std::int64_t>(std::sqrt(dx * dx + dy * dy));
}

StrokeDirection DirectionBetween(ScreenPoint from, ScreenPoint to) {
    const auto [dx, dy] = DifferenceBetween(from, to);
    if (dx == 0) {
        if (dy == 0) return StrokeDirection::None;
        return dy < 0 ? StrokeDirection::Up : StrokeDirection::Down;
    }
    const double angle = std::atan(static_cast<double>(dy) / static_cast<double>(std::abs(dx)));
    if (angle > kDiagonal) return StrokeDirection::Down;
    if (angle < -kDiagonal) return StrokeDirection::Up;
    return dx > 0 ? StrokeDirection::Right : StrokeDirection::Left;
}

std::optional<GestureNotice> StrokeRecogniser::Take(const StrokeSample& sample) {
    const bool isFirstHeld = sample.isHeld && !wasHeld;
    wasHeld = sample.isHeld;
    // The cancel button does not matter before a stroke has begun.
    if (!isTracking) return isFirstHeld ? Start(sample.cursor) : std::nullopt;
    if (sample.isCancelHeld) return Cancel();
    return sample.isHeld ? Follow(sample.cursor) : Complete();
}

std::optional<GestureNotice> StrokeRecogniser::Start(ScreenPoint cursor) {
    isTracking = true;
    segmentStart = anchor = cursor;
    currentDirection = StrokeDirection::None;
    finishedCount = 0;
    return GestureNotice{nullptr, GestureNoticeKind::Started, 0, {}};
}

std::optional<GestureNotice> StrokeRecogniser::Follow(ScreenPoint cursor) {
    if (currentDirection == StrokeDirection::None) {
        if (DistanceBetween(segmentStart, cursor) < kFirstThreshold) return std::nullopt;
        // The anchor stays where the segment began: the next sample is measured from there.
        currentDirection = DirectionBetween(segmentStart, cursor);
        return NoticeOf(GestureNoticeKind::Progress);
    }
    if (DistanceBetween(anchor, cursor) < kNextThreshold) return std::nullopt;
    if (DirectionBetween(anchor, cursor) != currentDirection) {
        FinishSegment();
        segmentStart = cursor;
    }
    anchor = cursor;
    return std::nullopt;
}

// Only the three most recent finished segments are kept; the one in progress is the fourth.
void StrokeRecogniser::FinishSegment() {
    finished[finishedCount++] = currentDirection;
    currentDirection = StrokeDirection::None;
    if (finishedCount < finished.size()) return;
    std::copy(finished.begin() + 1, finished.end(), finished.begin());
    --finishedCount;
}

GestureNotice StrokeRecogniser::Complete() {
    isTracking = false;
    return NoticeOf(GestureNoticeKind::Completed);
}

GestureNotice StrokeRecogniser::Cancel() {
    isTracking = false;
    return {nullptr, GestureNoticeKind::Cancelled, 0, {}};
}

// The finished segments and, once its direction is fixed, the one in progress.
GestureNotice StrokeRecogniser::NoticeOf(GestureNoticeKind kind) const {
    GestureNotice notice{nullptr, kind, static_cast<std::int32_t>(finishedCount), {}};
    std::copy_n(finished.begin(), finishedCount, notice.directions.begin());
    if (currentDirection != StrokeDirection::None) {
        notice.directions[static_cast<std::size_t>(notice.count++)] = currentDirection;
    }
    return notice;
}

}  // namespace kvn::model

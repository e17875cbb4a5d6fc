// Turns samples of the cursor into the stroke of a gesture: up to four directions, drawn while the gesture button is
// held. No heap, no clock, no window: samples in, notices out.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace kvn::model {

// Whole pixels of the screen. They grow to the right and downwards, and may be negative on a second monitor.
struct ScreenPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

enum class StrokeDirection : std::int32_t { None, Up, Right, Down, Left };

// The string id of a direction's letter; nothing for None, which has no letter.
std::optional<unsigned> LetterIdOf(StrokeDirection direction);

// The distance in whole pixels, rounded down.
std::int64_t DistanceBetween(ScreenPoint from, ScreenPoint to);

// The direction from `from` to `to`; exactly 45 degrees is horizontal, and the same point is None.
StrokeDirection DirectionBetween(ScreenPoint from, ScreenPoint to);

inline constexpr std::size_t kMaxStrokeLength = 4;

enum class GestureNoticeKind : std::int32_t { Started, Completed, Cancelled, Progress };

// The report to the owner of a capture.
struct GestureNotice {
    void* context = nullptr;  // passed through for the owner
    GestureNoticeKind kind{};
    std::int32_t count = 0;  // the number of valid directions
    std::array<StrokeDirection, kMaxStrokeLength> directions{};
};

// The input of one tick.
struct StrokeSample {
    ScreenPoint cursor;
    bool isHeld = false;        // the gesture button
    bool isCancelHeld = false;  // the button that cancels a stroke
};

class StrokeRecogniser {
public:
    // A stroke begins with the first sample that has the button held, and ends when it is released (Completed) or the
    // cancel button is held (Cancelled). Each segment reports Progress once, when its direction is fixed.
    std::optional<GestureNotice> Take(const StrokeSample& sample);

    // Whether a stroke is being recorded.
    bool IsTracking() const { return isTracking; }

private:
    std::optional<GestureNotice> Start(ScreenPoint cursor);
    std::optional<GestureNotice> Follow(ScreenPoint cursor);
    GestureNotice Complete();
    GestureNotice Cancel();

    void FinishSegment();
    GestureNotice NoticeOf(GestureNoticeKind kind) const;

    bool isTracking = false;
    ScreenPoint segmentStart;
    ScreenPoint anchor;  // where the movement was last evaluated
    bool wasHeld = false;
    StrokeDirection currentDirection = StrokeDirection::None;  // of the segment in progress, once it is fixed
    std::size_t finishedCount = 0;
    std::array<StrokeDirection, kMaxStrokeLength> finished{};
};

}  // namespace kvn::model

// Any samples: the recogniser gives the same notices as the second one, within the limits of a notice.
#include <algorithm>
#include <limits>

#include "model/stroke_recogniser.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/model/stroke_notice_text.h"
#include "tests/model/stroke_oracle.h"

using namespace kvn;

namespace {

// The bits of a sample's first byte.
constexpr unsigned kHeld = 1;
constexpr unsigned kCancelHeld = 2;
constexpr unsigned kFarMove = 4;  // two bytes for each axis, from the last place
constexpr unsigned kAnyPlace = 8;

std::int32_t Moved(std::int32_t from, std::int64_t by) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(from + by, Limits::min(), Limits::max()));
}

template <typename Step>
model::ScreenPoint MovedBySteps(model::ScreenPoint from, fuzz::FuzzInput& input) {
    const auto dx = input.Number<Step>();
    const auto dy = input.Number<Step>();
    return {Moved(from.x, dx), Moved(from.y, dy)};
}

model::StrokeSample NextSample(model::ScreenPoint last, fuzz::FuzzInput& input) {
    const unsigned shape = input.Byte();
    model::StrokeSample sample{.isHeld = (shape & kHeld) != 0, .isCancelHeld = (shape & kCancelHeld) != 0};
    if ((shape & kAnyPlace) != 0) {
        sample.cursor.x = input.Number<std::int32_t>();
        sample.cursor.y = input.Number<std::int32_t>();
    } else if ((shape & kFarMove) != 0) {
        sample.cursor = MovedBySteps<std::int16_t>(last, input);
    } else {
        sample.cursor = MovedBySteps<std::int8_t>(last, input);
    }
    return sample;
}

void RequireWellFormed(const model::GestureNotice& notice) {
    const auto valid = static_cast<std::size_t>(notice.count);
    fuzz::Require(notice.count >= 0 && valid <= model::kMaxStrokeLength, "a stroke has at most four directions");
    for (std::size_t index = 0; index < model::kMaxStrokeLength; ++index) {
        const bool hasLetter = model::LetterIdOf(notice.directions[index]).has_value();
        fuzz::Require(hasLetter == (index < valid), "only the first directions have a letter");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    model::StrokeRecogniser recogniser;
    model::StrokeOracle oracle;
    model::StrokeSample sample;
    while (!input.IsAtEnd()) {
        sample = NextSample(sample.cursor, input);
        const bool wasTracking = recogniser.IsTracking();
        const auto notice = recogniser.Take(sample);
        if (notice) RequireWellFormed(*notice);
        const std::string told = notice ? model::Describe(*notice) : "";
        fuzz::Require(told == oracle.Take(sample.cursor.x, sample.cursor.y, sample.isHeld, sample.isCancelHeld),
                      "both recognisers agree");
        const bool begins = told == "Started ";
        const bool ends = told.starts_with("Completed ") || told == "Cancelled ";
        fuzz::Require(recogniser.IsTracking() == (begins || (wasTracking && !ends)), "a stroke begins and ends once");
    }
    return 0;
}

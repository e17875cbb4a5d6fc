// Any lists of programs and gestures: a reader of the registry finds every entry and every field.
#include <algorithm>
#include <vector>

#include "model/registry_changes.h"
#include "model/stroke_recogniser.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/multi_string.h"
#include "tests/model/stroke_notice_text.h"

using namespace kvn;

namespace {

constexpr std::string_view kLetters = "URDL";

// A text as a field can hold it: it ends at a zero, and a TAB becomes a blank.
std::wstring Held(std::wstring text) {
    text.resize(std::min(text.find(L'\0'), text.size()));
    std::replace(text.begin(), text.end(), L'\t', L' ');
    return text;
}

// A stroke that was drawn, as its letters.
std::wstring DrawnStroke(fuzz::FuzzInput& input) {
    model::GestureNotice notice;
    notice.count = input.Byte() % (model::kMaxStrokeLength + 1);
    std::for_each_n(notice.directions.begin(), notice.count, [&](model::StrokeDirection& direction) {
        direction = static_cast<model::StrokeDirection>(1 + input.Byte() % kLetters.size());
    });
    const std::string letters = model::Letters(notice);
    return {letters.begin(), letters.end()};
}

void RequireProgramsBack(fuzz::FuzzInput& input) {
    std::vector<model::ApplicationEntry> programs(input.Byte() % 8);
    for (model::ApplicationEntry& program : programs) program = {input.Text(), input.Text()};

    const auto entries = fuzz::EntriesOf(model::ApplicationsToMultiString(programs));
    fuzz::Require(entries && entries->size() == programs.size(), "every program is found");
    for (std::size_t index = 0; index < programs.size(); ++index) {
        const fuzz::ListEntry expected{Held(programs[index].name), Held(programs[index].path)};
        fuzz::Require((*entries)[index] == expected, "a program is found as it is");
    }
}

void RequireGesturesBack(fuzz::FuzzInput& input) {
    std::vector<model::GestureEntry> gestures(input.Byte() % 8);
    for (model::GestureEntry& gesture : gestures) {
        gesture.stroke = input.Byte() % 2 == 0 ? DrawnStroke(input) : input.Text();
        gesture.function = input.Number<model::FunctionCode>();
        gesture.memo = input.Text();
        for (model::KeyCode& code : gesture.etcKey.codes) code = input.Byte() - 2;
    }

    const auto entries = fuzz::EntriesOf(model::GesturesToMultiString(gestures));
    fuzz::Require(entries && entries->size() == gestures.size(), "every gesture is found");
    for (std::size_t index = 0; index < gestures.size(); ++index) {
        const model::GestureEntry& gesture = gestures[index];
        const fuzz::ListEntry& fields = (*entries)[index];
        fuzz::Require(fields.size() == 4, "a gesture has four fields");
        fuzz::Require(fields[0] == Held(gesture.stroke) && fields[2] == Held(gesture.memo), "its texts are found");
        fuzz::Require(std::stol(fields[1]) == gesture.function, "its function is found");
        fuzz::Require(fields[3] == model::EtcKeyToText(gesture.etcKey), "its keys are found");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    RequireProgramsBack(input);
    RequireGesturesBack(input);
    return 0;
}

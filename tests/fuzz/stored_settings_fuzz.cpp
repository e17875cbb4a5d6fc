// Any bytes as the values of a model's key: settings in their ranges, which come back after the page has written them.
#include <optional>
#include <vector>

#include "model/registry_changes.h"
#include "model/stored_settings.h"
#include "tests/fuzz/fuzz_input.h"

using namespace kvn;

namespace {

constexpr wchar_t kHeading[] = L"Arbitrary key";

model::StoredBytes AnyBytes(fuzz::FuzzInput& input) {
    model::StoredBytes bytes;
    while (!input.IsAtEnd()) {
        const auto value = input.Byte() % model::kRegistryValues.size();
        const auto taken = input.Take(input.Byte());
        bytes.items[value].emplace(taken.begin(), taken.end());
    }
    return bytes;
}

std::vector<model::GestureEntry> WrittenAndRead(const std::vector<model::GestureEntry>& gestures) {
    return model::GesturesFromMultiString(model::GesturesToMultiString(gestures), kHeading);
}

// Writing loses a key that has no text. The second time nothing more is lost.
void RequireGesturesBack(const std::vector<model::GestureEntry>& gestures) {
    const auto once = WrittenAndRead(gestures);
    fuzz::Require(once.size() == gestures.size(), "every gesture is found");
    fuzz::Require(WrittenAndRead(once) == once, "gestures are found as they are");
}

void RequireInRange(const model::ProfileSettings& settings) {
    for (const model::ButtonSlotRow& row : model::kButtonSlots) {
        const model::FunctionCode code = settings.FunctionOf(row.slot);
        fuzz::Require(code >= 0 && code <= model::kMaxFunctionCode, "a function is in its range");
    }
    const std::int32_t speed = settings[model::SettingField::HorizontalScrollSpeed];
    fuzz::Require(speed >= 1 && speed <= 8, "the horizontal speed is in its range");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    const model::StoredSettings stored = model::StoredSettingsFrom(AnyBytes(input), kHeading);
    const model::ProfileSettings settings = model::CompletedFrom(stored, model::DefaultProfileRecord().settings);
    RequireInRange(settings);
    RequireGesturesBack(settings.gestures);
    const auto applications =
        model::ApplicationsFromMultiString(model::ApplicationsToMultiString(settings.applications));
    fuzz::Require(applications == settings.applications, "programs are found as they are");
    return 0;
}

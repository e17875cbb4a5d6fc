#include "service/settings/settings_block.h"

#include <algorithm>
#include <optional>
#include <string>

#include "model/stored_stroke.h"

namespace kvn::service {
namespace {

using model::SettingField;
using model::StrokeDirection;

using Stroke = std::array<StrokeDirection, model::kMaxStrokeLength>;

constexpr std::int32_t kMostFlicks = 5;
constexpr std::int32_t kFastest = 10;
constexpr std::int32_t kUsualSpeed = 5;

std::optional<Stroke> StrokeOf(const std::wstring& letters) {
    if (letters.empty() || letters.size() > model::kMaxStrokeLength) return std::nullopt;
    Stroke stroke{};
    std::ranges::transform(letters, stroke.begin(), model::DirectionOfStoredLetter);
    const auto end = stroke.begin() + static_cast<std::ptrdiff_t>(letters.size());
    if (std::find(stroke.begin(), end, StrokeDirection::None) != end) return std::nullopt;
    return stroke;
}

// The tilts are the last two.
std::int32_t ControlCount(const model::DeviceRecord& mouse) {
    constexpr std::int32_t kMostButtons = model::kMaxButtonCount - 2;
    return mouse.HasTiltWheel() ? model::kMaxButtonCount : std::clamp(mouse.buttonCount, 0, kMostButtons);
}

std::int32_t Speed(std::int32_t stored) {
    return stored >= 1 && stored <= kFastest ? stored : kUsualSpeed;
}

FlyingScroll FlyingScrollOf(const model::ProfileSettings& settings, const model::DeviceRecord& mouse) {
    const std::int32_t flicks = settings[SettingField::FlyingRevolutionCount];
    const bool isOn = flicks >= 1 && flicks <= kMostFlicks && !mouse.LacksFlyingScroll();
    return {.flicks = isOn ? flicks : 0,
            .revolutionSpeed = Speed(settings[SettingField::FlyingRevolutionSpeed]),
            .scrollSpeed = Speed(settings[SettingField::FlyingScrollSpeed])};
}

void AddGestures(const std::vector<model::GestureEntry>& gestures, EngineSettings& block) {
    for (const model::GestureEntry& gesture : gestures) {
        if (block.gestureCount == kMaxGestures) return;
        const std::optional<Stroke> stroke = StrokeOf(gesture.stroke);
        if (stroke) block.gestures[block.gestureCount++] = {*stroke, gesture.function, gesture.etcKey};
    }
}

}  // namespace

EngineSettings SettingsBlock(const model::ProfileSettings& settings, const model::DeviceRecord& mouse,
                             std::uint32_t profile) {
    EngineSettings block;
    block.profile = profile;
    block.controlCount = ControlCount(mouse);
    for (const model::ButtonSlotRow& row : model::kButtonSlots) {
        block.functions[row.slot] = settings.FunctionOf(row.slot);
    }
    block.keys = settings.etcKeys;
    block.horizontalSpeed = settings[SettingField::HorizontalScrollSpeed];
    block.flying = FlyingScrollOf(settings, mouse);
    AddGestures(settings.gestures, block);
    return block;
}

}  // namespace kvn::service

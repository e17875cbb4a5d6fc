#include "model/mouse_settings.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kvn::model {
namespace {

bool SlotOffers(const MouseSettings& settings, ButtonSlot slot, FunctionCode code) {
    const auto offered = FunctionsForSlot(settings.os, settings.IsOnMouse(slot));
    return std::any_of(offered.begin(), offered.end(), [code](const CatalogueRow& row) { return row.code == code; });
}

TEST(MouseSettingsTest, OnAModelWithFiveButtonsTheTwoTiltsOfferNeitherGestureNorShift) {
    MouseSettings settings;
    settings.os = {6, 1};
    settings.device.buttonCount = 5;
    for (const ButtonSlotRow& row : kButtonSlots) {
        const bool isTilt = row.slot == ButtonSlot::TiltLeft || row.slot == ButtonSlot::TiltRight;
        EXPECT_EQ(SlotOffers(settings, row.slot, kFunctionGesture), !isTilt) << row.etcKeyElement;
        EXPECT_EQ(SlotOffers(settings, row.slot, kFunctionShift), !isTilt) << row.etcKeyElement;
    }
}

TEST(MouseSettingsTest, ASlotIsOnTheMouseWhenItsNumberIsBelowTheButtonCount) {
    MouseSettings settings;
    for (int buttons = 0; buttons <= kMaxButtonCount; ++buttons) {
        settings.device.buttonCount = buttons;
        for (int slot = 0; slot < 7; ++slot) {
            EXPECT_EQ(settings.IsOnMouse(static_cast<ButtonSlot>(slot)), slot < buttons) << slot << ' ' << buttons;
        }
    }
}

TEST(MouseSettingsTest, SelectedIsTheSelectedProfileItself) {
    MouseSettings settings;
    settings.profiles.assign(3, DefaultProfileRecord());
    settings.selectedProfile = 1;
    settings.Selected()[SettingField::Left] = 17;
    EXPECT_EQ(settings.profiles[1].settings[SettingField::Left], 17);
    EXPECT_EQ(settings.profiles[0].settings[SettingField::Left], 1);
    EXPECT_EQ(&std::as_const(settings).Selected(), &settings.profiles[1].settings);
}

}  // namespace
}  // namespace kvn::model

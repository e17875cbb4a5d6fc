#include "service/input/mouse_choice.h"

#include <algorithm>

namespace kvn::service {

void MouseChoice::Attach(Device device, const MouseFacts& facts) {
    auto known = std::ranges::find(mice, device, &Mouse::device);
    if (known == mice.end()) known = mice.insert(mice.end(), Mouse{device, {}, 0});
    known->facts = facts;
    known->countedButtons = pressedBefore[facts.deviceName];
    if (chosenDevice == nullptr || chosenDevice == device) Choose(*known);
}

void MouseChoice::Detach(Device device) {
    std::erase_if(mice, [=](const Mouse& mouse) { return mouse.device == device; });
    if (chosenDevice != device) return;
    chosenDevice = nullptr;
    ChooseMostCapable();
}

void MouseChoice::ChooseMostCapable() {
    const auto buttonsOf = [](const Mouse& mouse) {
        return DescribeMouse(mouse.facts, mouse.countedButtons).buttonCount;
    };
    const auto best = std::ranges::max_element(mice, {}, buttonsOf);
    if (best != mice.end()) Choose(*best);
}

bool MouseChoice::Take(Device device, std::uint32_t pressedButtons, bool isUse) {
    const auto mouse = std::ranges::find(mice, device, &Mouse::device);
    if (mouse == mice.end()) return false;
    if (pressedButtons != 0) pressedBefore[mouse->facts.deviceName] |= pressedButtons;
    if (isUse && chosenDevice != device) Choose(*mouse);
    return true;
}

void MouseChoice::Choose(const Mouse& mouse) {
    chosenDevice = mouse.device;
    chosen = DescribeMouse(mouse.facts, mouse.countedButtons);
}

}  // namespace kvn::service

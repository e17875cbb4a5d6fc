// The tools of these tests, without a service: input of the hands arrives as real, input of a program as sent.
#include "tests/end_to_end/input.h"
#include "tests/service_end_to_end/service_world.h"

namespace kvn::service_end_to_end {
namespace {

class HarnessTest : public ServiceTest {};

TEST_F(HarnessTest, EveryControlArrivesAsARealOne) {
    Recorder& recorder = StartRecorder();
    for (const ButtonSlot control : {kLeft, kRight, kWheel, kBack, kForward, kTiltLeft, kTiltRight}) {
        hands.Click(control);
    }
    hands.TurnWheelUp();
    hands.TurnWheelDown();
    ExpectAll(recorder, {"real left down", "real left up", "real right down", "real right up", "real wheel down",
                         "real wheel up", "real back down", "real back up", "real forward down", "real forward up",
                         "real hwheel -120", "real hwheel 120", "real turn 120", "real turn -120"});
}

TEST_F(HarnessTest, KeysOfHandsAndProgramsAreDistinguished) {
    Recorder& recorder = StartRecorder();
    hands.HoldKey("Shift_L");
    hands.PressKey("c");
    hands.LetGoOfKey("Shift_L");
    Expect(recorder, {"real down Shift", "real down C [Shift]", "real up C [Shift]", "real up Shift"});
    end_to_end::PressTogether({VK_LCONTROL, 'X'});
    ExpectAll(recorder, {"sent down Ctrl", "sent down X [Ctrl]", "sent up X [Ctrl]", "sent up Ctrl"});
}

}  // namespace
}  // namespace kvn::service_end_to_end

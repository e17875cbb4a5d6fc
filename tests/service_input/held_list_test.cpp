#include "service/input/held_list.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "service/input/key_sending.h"
#include "tests/service_input/recorder_window.h"

namespace kvn::test {
namespace {

TEST(HeldListTest, AllThatItHoldsIsReleased) {
    RecorderWindow recorder;
    service::HeldList held;
    service::InputBatch batch;
    batch.KeyDown(VK_RCONTROL);
    batch.KeyDown('A');
    batch.ButtonDown(VK_XBUTTON2);
    EXPECT_TRUE(batch.Send());
    for (const int key : {VK_RCONTROL, int{'A'}, VK_XBUTTON2}) held.counts[static_cast<std::size_t>(key)] = 2;
    EXPECT_EQ(recorder.Await("+RCtrl +A +X2"), "+RCtrl +A +X2");
    service::ReleaseAll(held);
    EXPECT_EQ(recorder.Await("+RCtrl +A +X2 -X2 -A -RCtrl"), "+RCtrl +A +X2 -X2 -A -RCtrl");
    EXPECT_TRUE(std::ranges::all_of(held.counts, [](const auto& count) { return count == 0; }));
}

}  // namespace
}  // namespace kvn::test

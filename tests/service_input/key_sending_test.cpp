#include "service/input/key_sending.h"

#include <gtest/gtest.h>

#include "tests/service_input/recorder_window.h"

namespace kvn::test {
namespace {

TEST(KeySendingTest, PauseHasItsOwnScanCodeThoughTheLayoutHasNone) {
    RecorderWindow recorder;
    service::InputBatch batch;
    batch.KeyDown(VK_PAUSE);
    batch.KeyUp(VK_PAUSE);
    EXPECT_TRUE(batch.Send());
    EXPECT_EQ(recorder.Await("+Pause69 -Pause69"), "+Pause69 -Pause69");
}

}  // namespace
}  // namespace kvn::test

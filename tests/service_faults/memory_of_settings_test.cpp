// The thread that reads the settings without memory.
#include "tests/service_faults/refused_memory.h"
#include "tests/service_settings/hub_fixture.h"

namespace kvn::service {
namespace {

using MemoryOfSettingsTest = HubFixture;
using kvn::test::ProfileText;
using kvn::test::Whose;

TEST_F(MemoryOfSettingsTest, SettingsThatCouldNotBeReadAreReadWhenThereIsMemoryAgain) {
    constexpr int kStep = 23;  // of some hundred allocations
    constexpr int kFunctions[] = {3, 4};
    WriteFile({ProfileText("First", {{"lbutton", "3"}})});
    StartReadHub();
    int round = 0;
    kvn::test::SweepRefusals(
        Whose::Others, kStep,
        [&] {
            WriteFile({ProfileText("First", {{"lbutton", std::to_string(kFunctions[++round % 2])}})});
            Hub().Reread();
            // Until the thread is idle, which it does not report.
            kvn::test::ComesTrue([&] { return LeftFunction() == kFunctions[round % 2]; },
                                 std::chrono::milliseconds(40));
        },
        [&](int number) {
            SCOPED_TRACE(number);
            Hub().Reread();
            EXPECT_TRUE(kvn::test::ComesTrue([&] { return LeftFunction() == kFunctions[round % 2]; }));
        });
}

}  // namespace
}  // namespace kvn::service

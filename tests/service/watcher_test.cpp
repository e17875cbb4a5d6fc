// The second process of the service.
#include "service/shared_state.h"
#include "tests/service/program.h"
#include "tests/support/waiting.h"

namespace kvn::service_test {
namespace {

using service::SharedMemory;
using test::Await;

class WatcherTest : public ServiceProgramTest {
protected:
    // The watcher's process, once it watches.
    DWORD AwaitWatcherOtherThan(DWORD process) {
        const auto find = [=, this]() -> DWORD {
            const DWORD found = memory.State().watcherProcess;
            return found == process || RunningProcesses() < 2 ? 0 : found;
        };
        return Await("a watcher", find, std::chrono::seconds{30});
    }

    SharedMemory memory;
};

TEST_F(WatcherTest, AServiceThatIsKilledIsStartedAgainWithItsMouse) {
    StartService();
    AwaitWatcherOtherThan(0);
    const DWORD first = ServiceProcess();
    EXPECT_EQ(Run({L"--pause"}).exitCode, 0U);
    Kill(first);
    AwaitServiceOtherThan(first);
    auto status = Status();
    EXPECT_EQ(status["vid"], "1234");
    EXPECT_EQ(status["paused"], "no");
    EXPECT_EQ(Run({L"--quit"}).exitCode, 0U);
    EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }));
}

TEST_F(WatcherTest, WhatAKilledServiceHeldIsReleased) {
    StartService();
    AwaitWatcherOtherThan(0);
    const DWORD first = ServiceProcess();
    memory.State().held.counts[VK_F13] = 1;
    Kill(first);
    Await("the release", [this] { return memory.State().held.counts[VK_F13] == 0; });
    AwaitServiceOtherThan(first);
}

TEST_F(WatcherTest, AWatcherThatIsKilledIsReplaced) {
    StartService();
    const DWORD watched = ServiceProcess();
    const DWORD watcher = AwaitWatcherOtherThan(0);
    Kill(watcher);
    AwaitWatcherOtherThan(watcher);
    EXPECT_EQ(ServiceProcess(), watched);
    Kill(watched);
    AwaitServiceOtherThan(watched);
}

TEST_F(WatcherTest, AServiceThatKeepsEndingIsGivenUp) {
    StartService();
    AwaitWatcherOtherThan(0);
    for (int restart = 0; restart < 3; ++restart) {
        const DWORD killed = ServiceProcess();
        Kill(killed);
        AwaitServiceOtherThan(killed);
    }
    Kill(ServiceProcess());
    EXPECT_TRUE(test::ComesTrue([this] { return RunningProcesses() == 0; }, std::chrono::seconds{30}));
    EXPECT_EQ(Window(), nullptr);
}

}  // namespace
}  // namespace kvn::service_test

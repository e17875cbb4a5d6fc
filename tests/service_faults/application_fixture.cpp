#include "tests/service_faults/application_fixture.h"

#include <algorithm>
#include <variant>

#include "platform/service_protocol.h"
#include "service/lifecycle/shared_state.h"
#include "service/lifecycle/watcher.h"
#include "service/options/arguments.h"
#include "service/page/service_window.h"

namespace kvn::test {
namespace {

// As the service's watcher, the program must not run tests.
const struct OtherProgram {
    OtherProgram() {
        const auto parsed = service::ParseArguments(service::Arguments());
        const auto* const options = std::get_if<service::CommandLine>(&parsed);
        if (options == nullptr || (!options->watchedProcess && !options->watcherProcess)) return;
        if (options->watchedProcess) service::WatchService(*options->watchedProcess);
        ExitProcess(0);
    }
} otherProgram;

}  // namespace

ApplicationTest::~ApplicationTest() {
    End();
    service::EndWatcher();
}

bool ApplicationTest::Start(const std::wstring& options) {
    application = std::make_unique<service::Application>();
    return application->Start(Options(options));
}

HWND ApplicationTest::Window() {
    return service::FindRunningService();
}

LRESULT ApplicationTest::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageW(Window(), message, wParam, lParam);
}

LRESULT ApplicationTest::Probe() const {
    return Send(static_cast<UINT>(platform::ServiceMessage::Probe));
}

service::CommandLine ApplicationTest::Options(const std::wstring& text) {
    return std::get<service::CommandLine>(service::ParseArguments(service::SplitCommandLine(L"x " + text)));
}

std::wstring ApplicationTest::StatusText() {
    return application->CarryOut(Options(L"--status")).text;
}

bool ApplicationTest::IsNothingHeld() {
    service::SharedMemory memory;
    return std::ranges::all_of(memory.State().held.counts, [](const auto& count) { return count == 0; });
}

}  // namespace kvn::test

#include "bench/running_service.h"

#include "platform/service_messages.h"
#include "tests/support/started_process.h"

namespace kvn::bench {
namespace {

constexpr DWORD kStartMilliseconds = 10'000;

}  // namespace

RunningService::RunningService(const std::wstring& moreOptions) {
    const std::wstring command = L"service\\KvnMouseAplDouble.exe --image KvnSample --vid " +
                                 std::to_wstring(kSampleVid) + L" --pid " + std::to_wstring(kSamplePid) + L" " +
                                 moreOptions;
    process = test::StartProcess(command).process;
    if (!process) return;
    for (DWORD waited = 0; platform::FindService() == nullptr && waited < kStartMilliseconds; waited += 10) Sleep(10);
}

// Waits for its end, since the next service must not find this one.
RunningService::~RunningService() {
    if (!process) return;
    TerminateProcess(process.Get(), 0);
    WaitForSingleObject(process.Get(), kStartMilliseconds);
    for (DWORD waited = 0; platform::FindService() != nullptr && waited < kStartMilliseconds; waited += 10) Sleep(10);
}

bool RunningService::Runs() const {
    return process && platform::FindService() != nullptr;
}

}  // namespace kvn::bench

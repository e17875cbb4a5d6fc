#include "bench/running_service.h"

#include "platform/service_messages.h"

namespace kvn::bench {
namespace {

constexpr DWORD kStartMilliseconds = 10'000;

}  // namespace

RunningService::RunningService(const std::wstring& moreOptions) {
    std::wstring command = L"service\\KvnMouseAplDouble.exe --image KvnSample --vid " + std::to_wstring(kSampleVid) +
                           L" --pid " + std::to_wstring(kSamplePid) + L" " + moreOptions;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION information{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &information)) {
        return;
    }
    process.Reset(information.hProcess);
    CloseHandle(information.hThread);
    for (DWORD waited = 0; platform::FindService() == nullptr && waited < kStartMilliseconds; waited += 10) Sleep(10);
}

// The next service must not find this one.
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

// The service's double with the sample mouse, for as long as the object lives.
#pragma once

#include <cstdint>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::bench {

// The sample mouse.
inline constexpr std::uint32_t kSampleVid = 0xBE4C;
inline constexpr std::uint32_t kSamplePid = 0x0001;

class RunningService {
public:
    // Waits until the service's window is there. The program is in the folder "service".
    explicit RunningService(const std::wstring& moreOptions = L"");
    ~RunningService();
    RunningService(const RunningService&) = delete;
    RunningService& operator=(const RunningService&) = delete;

    bool Runs() const;

private:
    platform::UniqueKernelObject process;
};

}  // namespace kvn::bench

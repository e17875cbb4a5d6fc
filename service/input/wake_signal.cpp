#include "service/input/wake_signal.h"

#include "platform/system_library.h"

namespace kvn::service {
namespace {

constexpr const wchar_t* kLibrary = L"kernelbase.dll";

}  // namespace

WakeSignal::WakeSignal()
    : waitOnAddress(platform::SystemFunction<WaitFunction>(kLibrary, "WaitOnAddress")),
      wakeByAddress(platform::SystemFunction<WakeFunction>(kLibrary, "WakeByAddressSingle")) {
    if (wakeByAddress == nullptr) waitOnAddress = nullptr;
    if (waitOnAddress == nullptr) event.Reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
}

void WakeSignal::Raise() {
    if (waitOnAddress == nullptr) {
        SetEvent(event.Get());
    } else if (isRaised.exchange(1) == 0) {
        wakeByAddress(&isRaised);
    }
}

void WakeSignal::Await(DWORD milliseconds) {
    if (waitOnAddress == nullptr) {
        WaitForSingleObject(event.Get(), milliseconds);
        return;
    }
    std::uint32_t notRaised = 0;
    waitOnAddress(&isRaised, &notRaised, sizeof isRaised, milliseconds);
    isRaised.exchange(0);  // everything done before the raise is visible after this
}

}  // namespace kvn::service

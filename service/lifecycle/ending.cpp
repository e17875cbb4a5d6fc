#include "service/lifecycle/ending.h"

namespace kvn::service {
namespace {

constexpr DWORD kMilliseconds = 1'800;

}  // namespace

EndInTime::EndInTime(HeldList& heldList) {
    CreateTimerQueueTimer(&timer, nullptr, OnTooLate, &heldList, kMilliseconds, 0,
                          WT_EXECUTEONLYONCE | WT_EXECUTELONGFUNCTION);
}

EndInTime::~EndInTime() {
    if (timer != nullptr) DeleteTimerQueueTimer(nullptr, timer, nullptr);
}

void CALLBACK EndInTime::OnTooLate(void* heldList, BOOLEAN /*timerFired*/) noexcept {
    ReleaseAll(*static_cast<HeldList*>(heldList));
    TerminateProcess(GetCurrentProcess(), 0);
}

}  // namespace kvn::service

#include "service/lifecycle/session_lock.h"

namespace kvn::service {
namespace {

constexpr wchar_t kName[] = L"Local\\KvnMouseApl";

}  // namespace

SessionLock::SessionLock() : mutex(CreateMutexW(nullptr, FALSE, kName)) {
    // Only the name matters, which exists as long as its owner.
    if (GetLastError() == ERROR_ALREADY_EXISTS) mutex.Reset();
}

bool SessionLock::IsTaken() {
    return static_cast<bool>(platform::UniqueKernelObject(OpenMutexW(SYNCHRONIZE, FALSE, kName))) ||
           GetLastError() == ERROR_ACCESS_DENIED;
}

}  // namespace kvn::service

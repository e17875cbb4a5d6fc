#include "page/module_state.h"

#include <windows.h>

#include <atomic>

#include "platform/boundary.h"
#include "platform/module.h"

namespace kvn::page {
namespace {

// COM may ask on another thread than the page's.
std::atomic<int> serverReferences = 0;

// References to the loaded module.
std::atomic<int> heldByPages = 0;
std::atomic<int> heldByNobody = 0;

}  // namespace

void AddServerReference() {
    ++serverReferences;
}
void ReleaseServerReference() {
    --serverReferences;
}
bool HasServerReferences() {
    return serverReferences != 0;
}

void HoldModuleForPage() noexcept {
    HMODULE module = nullptr;
    const auto* const insideModule = reinterpret_cast<LPCWSTR>(platform::ThisModule());
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, insideModule, &module)) ++heldByPages;
}

void ReleaseModuleOfPage() noexcept {
    // A page created without the shell holds no reference.
    if (heldByPages == 0) return;
    --heldByPages;
    ++heldByNobody;
}

void GiveBackModule() noexcept {
    // A window procedure may still be returning. A later call releases the references then.
    if (platform::callsInside != 0) return;
    for (int count = heldByNobody.exchange(0); count > 0; --count) FreeLibrary(platform::ThisModule());
}

}  // namespace kvn::page

#include "platform/memory_reserve.h"

#include <atomic>
#include <cstdlib>
#include <exception>
#include <new>

namespace kvn::platform {
namespace {

// The C++ runtime ends the process if there is no memory for an exception. An exception takes some, a thread's first
// one takes more, and the locks of the runtime's own reserve take still more. All of it is less than a tenth of this.
constexpr std::size_t kReserveBytes = std::size_t{16} * 1024;

std::atomic<void*> reserve;

// Called when `new` fails: frees memory for the exception.
void SpendReserve() {
    std::free(reserve.exchange(nullptr));
    throw std::bad_alloc();
}

const struct Preparation {
    Preparation() {
        KeepMemoryReserve();
        std::set_new_handler(SpendReserve);
        // The first call allocates what this thread needs to throw.
        static_cast<void>(std::uncaught_exceptions());
    }
    Preparation(const Preparation&) = delete;
    Preparation& operator=(const Preparation&) = delete;
    ~Preparation() { std::free(reserve.exchange(nullptr)); }
} preparation;

}  // namespace

void KeepMemoryReserve() noexcept {
    if (reserve.load() != nullptr) return;
    void* const block = std::malloc(kReserveBytes);
    void* expected = nullptr;
    if (!reserve.compare_exchange_strong(expected, block)) std::free(block);
}

}  // namespace kvn::platform

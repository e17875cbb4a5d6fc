#include "platform/memory_reserve.h"

#include <atomic>
#include <cstdlib>
#include <exception>
#include <new>

namespace kvn::platform {
namespace {

// The C++ runtime ends the process when it finds no memory for its first exception: an exception takes some, a thread's
// first one more, the locks of the runtime's own reserve yet more. Together that is less than a tenth of this.
constexpr std::size_t kReserveBytes = std::size_t{16} * 1024;

std::atomic<void*> reserve;

// What a failing `new` calls: there is memory for the exception now.
void SpendReserve() {
    std::free(reserve.exchange(nullptr));
    throw std::bad_alloc();
}

const struct Preparation {
    Preparation() {
        KeepMemoryReserve();
        std::set_new_handler(SpendReserve);
        // The first look at it makes what this thread needs to throw.
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

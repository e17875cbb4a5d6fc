// A queue of a fixed size between two threads: one adds, one removes, and neither ever waits for the other.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace kvn::service {

// Capacity is a power of two.
template <typename T, std::size_t kCapacity>
class LockFreeRing {
    static_assert((kCapacity & (kCapacity - 1)) == 0);

public:
    // For the thread that adds. False if the ring is full.
    bool Put(const T& item) {
        if (Room() == 0) return false;
        const std::size_t end = written.load(std::memory_order_relaxed);
        items[end % kCapacity] = item;
        written.store(end + 1, std::memory_order_release);
        return true;
    }

    // For the thread that adds: the free space can only grow after this call.
    std::size_t Room() const {
        return kCapacity - (written.load(std::memory_order_relaxed) - read.load(std::memory_order_acquire));
    }

    // For the thread that removes. False if the ring is empty.
    bool Take(T& item) {
        if (IsEmpty()) return false;
        const std::size_t begin = read.load(std::memory_order_relaxed);
        item = items[begin % kCapacity];
        read.store(begin + 1, std::memory_order_release);
        return true;
    }

    bool IsEmpty() const { return read.load(std::memory_order_relaxed) == written.load(std::memory_order_acquire); }

private:
    std::array<T, kCapacity> items{};
    std::atomic<std::size_t> written = 0;
    std::atomic<std::size_t> read = 0;
};

}  // namespace kvn::service

// The memory that this program takes from the C library's heap, and with it all that `new` takes.
#pragma once

#include <windows.h>

#include <malloc.h>
#include <algorithm>
#include <atomic>
#include <cstddef>

#include "tests/model_windows/genuine_function.h"
#include "tests/support/replaced_import.h"

namespace kvn::model::test {

inline constexpr std::size_t kMegabyte = std::size_t{1024} * 1024;

// While it lives, it knows the most bytes that were taken at one time beyond those of the beginning.
class HeapWatch {
public:
    bool IsInPlace() const { return taking.IsInPlace() && giving.IsInPlace(); }
    std::ptrdiff_t PeakBytes() const { return peak; }

private:
    void* Take(std::size_t size) {
        void* const block = genuineMalloc(size);
        if (block != nullptr) {
            taken += static_cast<std::ptrdiff_t>(_msize(block));
            peak = std::max(peak.load(), taken.load());
        }
        return block;
    }
    void Give(void* block) {
        if (block != nullptr) taken -= static_cast<std::ptrdiff_t>(_msize(block));
        genuineFree(block);
    }

    std::atomic<std::ptrdiff_t> taken = 0;
    std::atomic<std::ptrdiff_t> peak = 0;
    void* (*genuineMalloc)(std::size_t) = Genuine<void*(std::size_t)>(L"msvcrt", "malloc");
    void (*genuineFree)(void*) = Genuine<void(void*)>(L"msvcrt", "free");
    kvn::test::ReplacedImport<"malloc", void*(std::size_t)> taking{GetModuleHandleW(nullptr),
                                                                   [this](std::size_t size) { return Take(size); }};
    kvn::test::ReplacedImport<"free", void(void*)> giving{GetModuleHandleW(nullptr),
                                                          [this](void* block) { Give(block); }};
};

}  // namespace kvn::model::test

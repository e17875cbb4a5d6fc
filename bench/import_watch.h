// Counts and times every call that a loaded module makes through its imports.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvn::bench {

struct ImportCalls {
    std::string name;
    std::size_t count = 0;
    double milliseconds = 0;  // without those of imports that were called meanwhile, by callbacks of the module
};

// While it lives, the module's imports are detoured. Only calls in the thread that made the object count. One at a
// time; none of the calls may be left by an exception.
class ImportWatch {
public:
    // With names, only these are watched: of the watch's own program none that it calls itself.
    explicit ImportWatch(HMODULE module, std::span<const std::string_view> names = {});
    ImportWatch(const ImportWatch&) = delete;
    ImportWatch& operator=(const ImportWatch&) = delete;
    ~ImportWatch();

    // Forgets what was counted so far.
    static void Restart();

    // Every function that was called, the one that took longest first.
    static std::vector<ImportCalls> Calls();

    // The calls of functions whose names begin like this.
    static std::size_t CountOf(std::string_view prefix);

    // The module's calls of the C library's malloc, calloc and realloc: every block that it takes from the heap.
    static std::size_t Allocations();
};

}  // namespace kvn::bench

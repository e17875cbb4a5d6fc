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
    double milliseconds = 0;  // without imports that callbacks of the module called meanwhile
};

// While it lives, the module's imports are detoured. Only calls on the thread that made the object count. One at a
// time; no call may end with an exception.
class ImportWatch {
public:
    // With names, only these functions are watched. In this program itself, do not name functions that the watch calls.
    explicit ImportWatch(HMODULE module, std::span<const std::string_view> names = {});
    ImportWatch(const ImportWatch&) = delete;
    ImportWatch& operator=(const ImportWatch&) = delete;
    ~ImportWatch();

    // Forgets what was counted so far.
    static void Restart();

    // Every function that was called, the slowest first.
    static std::vector<ImportCalls> Calls();

    // The number of calls of functions whose names begin with the prefix.
    static std::size_t CountOf(std::string_view prefix);

    // The module's calls of the C library's malloc, calloc and realloc: every block that it allocates.
    static std::size_t Allocations();
};

}  // namespace kvn::bench

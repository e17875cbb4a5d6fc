// Replaces one function that a module imports, to record the calls or to make them fail.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <utility>

namespace kvn::test {

// The module's own entry for an imported function; null if it imports no such function.
void** FindImport(HMODULE module, const char* functionName);

// Puts another address into the entry and returns the previous one; null if the module is no longer loaded.
void* ExchangeImport(void** entry, void* function);

// A function's name as a template argument.
template <std::size_t kLength>
struct FunctionName {
    char text[kLength]{};
    // NOLINTNEXTLINE(google-explicit-constructor): written as a plain literal where it is used
    constexpr FunctionName(const char (&literal)[kLength]) { std::copy_n(literal, kLength, text); }
};

template <FunctionName kName, typename Function>
class ReplacedImport;

// While it lives, the module's calls of the function go to the replacement; calls by other modules do not. One at a
// time for each function.
template <FunctionName kName, typename Result, typename... Arguments>
class ReplacedImport<kName, Result(Arguments...)> {
public:
    ReplacedImport(HMODULE module, std::function<Result(Arguments...)> standIn)
        : entry(FindImport(module, kName.text)) {
        replacement = std::move(standIn);
        if (entry != nullptr) original = ExchangeImport(entry, reinterpret_cast<void*>(&Forward));
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport() {
        if (entry != nullptr) ExchangeImport(entry, original);
    }

    // False if the module does not import the function, so nothing was replaced.
    bool IsInPlace() const { return entry != nullptr; }

private:
    static Result Forward(Arguments... arguments) { return replacement(arguments...); }

    static inline std::function<Result(Arguments...)> replacement;
    void** entry;
    void* original = nullptr;
};

}  // namespace kvn::test

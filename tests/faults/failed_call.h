// One call of an imported function that fails, by its number.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>

#include "tests/support/replaced_import.h"

namespace kvn::test {

struct FailedCall {
    int number = 0;  // counted from 1; 0: none
    int count = 0;

    bool Fails() { return ++count == number; }
    bool WasReached() const { return number != 0 && count >= number; }
};

// Replaces the function for as long as the result lives.
using FailingImport = std::function<std::shared_ptr<void>(HMODULE, FailedCall&)>;

template <FunctionName kName, typename Result, typename... Arguments>
FailingImport FailingWith(Result (*genuine)(Arguments...), Result failure) {
    return [=](HMODULE module, FailedCall& call) -> std::shared_ptr<void> {
        const auto standIn = [=, &call](Arguments... arguments) -> Result {
            return call.Fails() ? failure : genuine(arguments...);
        };
        auto import = std::make_shared<ReplacedImport<kName, Result(Arguments...)>>(module, standIn);
        return import->IsInPlace() ? import : nullptr;
    };
}

}  // namespace kvn::test

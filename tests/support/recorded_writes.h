// The registry writes of a module, call by call; single values can be made to fail.
#pragma once

#include <windows.h>

#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/mouse_on_registry.h"
#include "tests/support/replaced_import.h"

namespace kvn::test {

class RecordedWrites {
public:
    explicit RecordedWrites(HMODULE module);

    // Writes of this value fail from now on.
    void Fail(const std::wstring& value);
    void FailNothing();
    void Forget();

    // Every attempted write, in order; bytes as they were passed.
    std::vector<std::pair<std::wstring, StoredValue>> All() const;
    std::vector<std::wstring> Names() const;

private:
    LSTATUS OnSetValue(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size);

    mutable std::mutex mutex;
    std::set<std::wstring> failing;
    std::vector<std::pair<std::wstring, StoredValue>> writes;
    ReplacedImport<"RegSetValueExW", decltype(RegSetValueExW)> replaced;
};

}  // namespace kvn::test

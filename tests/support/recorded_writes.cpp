#include "tests/support/recorded_writes.h"

namespace kvn::test {

RecordedWrites::RecordedWrites(HMODULE module)
    : replaced(module, [this](HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
          return OnSetValue(key, name, reserved, type, data, size);
      }) {}

LSTATUS RecordedWrites::OnSetValue(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data,
                                   DWORD size) {
    const std::wstring value = name == nullptr ? L"" : name;
    const std::lock_guard guard(mutex);
    writes.emplace_back(value, StoredValue{type, {data, data + size}});
    if (failing.contains(value)) return ERROR_ACCESS_DENIED;
    return RegSetValueExW(key, name, reserved, type, data, size);
}

void RecordedWrites::Fail(const std::wstring& value) {
    const std::lock_guard guard(mutex);
    failing.insert(value);
}

void RecordedWrites::FailNothing() {
    const std::lock_guard guard(mutex);
    failing.clear();
}

void RecordedWrites::Forget() {
    const std::lock_guard guard(mutex);
    writes.clear();
}

std::vector<std::pair<std::wstring, StoredValue>> RecordedWrites::All() const {
    const std::lock_guard guard(mutex);
    return writes;
}

std::vector<std::wstring> RecordedWrites::Names() const {
    std::vector<std::wstring> names;
    for (const auto& write : All()) names.push_back(write.first);
    return names;
}

}  // namespace kvn::test

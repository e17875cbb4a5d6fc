// Takes away the rights to a registry key for a while, so that reading or writing it fails.
#pragma once

#include <windows.h>

#include <sddl.h>

#include <stdexcept>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::model::test {

inline constexpr wchar_t kNothingAllowed[] = L"D:P(D;;KA;;;WD)";
inline constexpr wchar_t kReadingAllowed[] = L"D:P(A;;KR;;;WD)";

class LockedKey {
public:
    // The key, which is created if it is missing, and the rights that remain.
    LockedKey(HKEY root, const std::wstring& path, const wchar_t* rights) {
        if (RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_READ | WRITE_DAC, nullptr, key.Receive(), nullptr) !=
            ERROR_SUCCESS) {
            throw std::runtime_error("the key to lock cannot be opened");
        }
        SetRights(rights);
    }
    LockedKey(const LockedKey&) = delete;
    LockedKey& operator=(const LockedKey&) = delete;
    ~LockedKey() { SetRights(L"D:(A;;KA;;;WD)"); }

private:
    void SetRights(const wchar_t* rights) const {
        platform::Owned<PSECURITY_DESCRIPTOR, &LocalFree> descriptor;
        ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, descriptor.Receive(), nullptr);
        RegSetKeySecurity(key.Get(), DACL_SECURITY_INFORMATION, descriptor.Get());
    }

    platform::UniqueRegistryKey key;
};

}  // namespace kvn::model::test

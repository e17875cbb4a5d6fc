// Makes a registry key that may be read but not written for a while, so that the page's writes fail.
#pragma once

#include <windows.h>

#include <sddl.h>

#include <string>

#include "platform/unique_resource.h"
#include "tests/end_to_end/waiting.h"

namespace kvn::end_to_end {

class RegistryLock {
public:
    RegistryLock(HKEY root, const std::wstring& path) {
        if (RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, WRITE_DAC, nullptr, key.Receive(), nullptr) !=
                ERROR_SUCCESS ||
            !Allow(L"D:P(A;;KR;;;WD)")) {
            throw StoryError("a registry key cannot be locked");
        }
    }
    ~RegistryLock() { Allow(L"D:(A;;KA;;;WD)"); }
    RegistryLock(const RegistryLock&) = delete;
    RegistryLock& operator=(const RegistryLock&) = delete;

private:
    bool Allow(const wchar_t* rights) const {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(rights, SDDL_REVISION_1, &descriptor, nullptr)) {
            return false;
        }
        const bool isSet = RegSetKeySecurity(key.Get(), DACL_SECURITY_INFORMATION, descriptor) == ERROR_SUCCESS;
        LocalFree(descriptor);
        return isSet;
    }

    platform::UniqueRegistryKey key;
};

}  // namespace kvn::end_to_end

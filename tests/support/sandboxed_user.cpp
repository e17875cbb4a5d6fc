#include "tests/support/sandboxed_user.h"

#include <shlobj.h>
#include <shlwapi.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace kvn::test {
namespace {

constexpr wchar_t kSandboxes[] = L"Software\\KvnMouseUtilTests\\";
constexpr wchar_t kMakersFolder[] = L"\\KORVEN";
constexpr wchar_t kUserShellFolders[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";

std::wstring UniqueName() {
    static int number = 0;
    return std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number);
}

// The user's real root, even if another is in its place.
platform::UniqueRegistryKey CurrentUser() {
    platform::UniqueRegistryKey user;
    RegOpenCurrentUser(KEY_ALL_ACCESS, user.Receive());
    return user;
}

std::wstring MakeTemporaryFolder() {
    wchar_t temporary[MAX_PATH + 1]{};
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring folder = temporary + (L"kvn-" + UniqueName());
    std::filesystem::create_directories(folder);
    return folder;
}

std::wstring FolderOfTheShell() {
    wchar_t found[MAX_PATH]{};
    return SHGetSpecialFolderPathW(nullptr, found, CSIDL_APPDATA, FALSE) ? found : L"";
}

void Remove(const std::wstring& folder) {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

}  // namespace

SandboxedHive::SandboxedHive(HKEY root) : overriddenRoot(root), path(kSandboxes + UniqueName()) {
    const LSTATUS made = RegCreateKeyExW(CurrentUser().Get(), path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         KEY_ALL_ACCESS, nullptr, sandbox.Receive(), nullptr);
    if (made != ERROR_SUCCESS || RegOverridePredefKey(root, sandbox.Get()) != ERROR_SUCCESS) {
        throw std::runtime_error("the registry sandbox could not be created");
    }
}

SandboxedHive::~SandboxedHive() {
    RegOverridePredefKey(overriddenRoot, nullptr);
    sandbox.Reset();
    SHDeleteKeyW(CurrentUser().Get(), path.c_str());
}

SandboxedUser::SandboxedUser() : hive(HKEY_CURRENT_USER), ownFolder(MakeTemporaryFolder()), applicationData(ownFolder) {
    const auto bytes = static_cast<DWORD>((applicationData.size() + 1) * sizeof(wchar_t));
    RegSetKeyValueW(HKEY_CURRENT_USER, kUserShellFolders, L"AppData", REG_SZ, applicationData.c_str(), bytes);
    const std::wstring found = FolderOfTheShell();
    if (found == ownFolder) return;
    if (std::getenv("KVN_USER_IS_SAVED") == nullptr) {
        throw std::runtime_error("the application-data folder is not the sandbox's");
    }
    applicationData = found;
    Remove(applicationData + kMakersFolder);
}

SandboxedUser::~SandboxedUser() {
    if (applicationData != ownFolder) Remove(applicationData + kMakersFolder);
    Remove(ownFolder);
}

}  // namespace kvn::test

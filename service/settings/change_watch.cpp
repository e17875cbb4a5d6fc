#include "service/settings/change_watch.h"

#include <algorithm>

#include "model/registry_values.h"

namespace kvn::service {
namespace {

constexpr DWORD kFileChanges = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;
// "...\KORVEN\Tarsel3": the page creates both folders.
constexpr int kParents = 2;

// Every key on the path to this one, from the top, and the key itself.
std::vector<std::wstring> KeysOnTheWayTo(const std::wstring& path) {
    std::vector<std::wstring> keys;
    for (std::size_t end = path.find(L'\\'); end != std::wstring::npos; end = path.find(L'\\', end + 1)) {
        keys.push_back(path.substr(0, end));
    }
    keys.push_back(path);
    return keys;
}

std::wstring WithoutFinalBackslash(std::wstring folder) {
    if (!folder.empty() && folder.back() == L'\\') folder.pop_back();
    return folder;
}

std::wstring ParentOf(const std::wstring& folder) {
    const std::size_t end = folder.rfind(L'\\');
    return end == std::wstring::npos ? std::wstring() : folder.substr(0, end);
}

}  // namespace

KeyWatch::KeyWatch() : changed(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    if (!changed) return;
    const std::vector<std::wstring> path = KeysOnTheWayTo(model::kBaseKey);
    for (const std::wstring& key : path) {
        const bool isBaseKey = &key == &path.back();
        Watch(key.c_str(), isBaseKey,
              isBaseKey ? REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET : REG_NOTIFY_CHANGE_NAME);
    }
    if (keys.empty()) changed.Reset();
}

void KeyWatch::Watch(const wchar_t* path, bool withKeysBelow, DWORD changes) {
    platform::UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path, 0, KEY_NOTIFY, key.Receive()) != ERROR_SUCCESS) return;
    if (RegNotifyChangeKeyValue(key.Get(), withKeysBelow, changes, changed.Get(), TRUE) != ERROR_SUCCESS) return;
    keys.push_back(std::move(key));
}

FolderWatch::FolderWatch(std::wstring folder) {
    folder = WithoutFinalBackslash(std::move(folder));
    Watch(folder, kFileChanges);
    for (int parent = 0; parent < kParents; ++parent) {
        folder = ParentOf(folder);
        if (!folder.empty()) Watch(folder, FILE_NOTIFY_CHANGE_DIR_NAME);
    }
}

void FolderWatch::Watch(const std::wstring& folder, DWORD changes) {
    UniqueNotification notification(FindFirstChangeNotificationW(folder.c_str(), FALSE, changes));
    if (notification) notifications.push_back(std::move(notification));
}

std::vector<HANDLE> FolderWatch::Signals() const {
    std::vector<HANDLE> signals(notifications.size());
    std::ranges::transform(notifications, signals.begin(), &UniqueNotification::Get);
    return signals;
}

}  // namespace kvn::service

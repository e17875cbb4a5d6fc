// Notices when the registry keys of the mouse, or the files of a folder, change. They need not exist yet, and may be
// deleted and created again, since their parents are watched too. Each watch reports once. Make a new one for the next
// change before you read what has changed.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/unique_resource.h"

namespace kvn::service {

// Watches the base key and everything below it. Create it on a thread that outlives it.
class KeyWatch {
public:
    KeyWatch();

    // Signalled once something has changed; null if nothing could be watched.
    HANDLE Signal() const { return changed.Get(); }

private:
    void Watch(const wchar_t* path, bool withKeysBelow, DWORD changes);

    platform::UniqueKernelObject changed;
    std::vector<platform::UniqueRegistryKey> keys;
};

class FolderWatch {
public:
    // Watches nothing.
    FolderWatch() = default;
    // The folder's path may end with a backslash.
    explicit FolderWatch(std::wstring folder);

    // Any of them is signalled once something has changed.
    std::vector<HANDLE> Signals() const;

private:
    using UniqueNotification = platform::OwnedUnlessInvalid<&FindCloseChangeNotification>;

    void Watch(const std::wstring& folder, DWORD changes);

    std::vector<UniqueNotification> notifications;
};

}  // namespace kvn::service

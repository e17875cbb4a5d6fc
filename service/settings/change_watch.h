// Notices when the registry keys of the mouse, or the files of a folder, change. What is watched need not be there yet,
// and may go and come back: then its parents are watched, too. Each watch reports once; a new one is made for the next
// change, and before what has changed is read.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/unique_resource.h"

namespace kvn::service {

// The base key and all below it. To be made, and to live, in a thread that does not end.
class KeyWatch {
public:
    KeyWatch();

    // Signalled once something has changed; null when nothing could be watched.
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

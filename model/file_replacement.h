// Reads whole files, and replaces them so that either the old or the new one is always there. Paths are wide.
#pragma once

#include <windows.h>

#include <cstdio>
#include <optional>
#include <string>

#include "platform/unique_resource.h"

namespace kvn::model {

// Virus scanners and indexers may hold a file briefly; retry for this long.
inline constexpr int kSharingAttempts = 10;
inline constexpr DWORD kSharingRetryMilliseconds = 20;

// Tries again while another program holds the file. Returns the result of the last try.
template <typename Try>
bool TryWhileShared(const Try& tryOnce) {
    for (int attempt = 1; !tryOnce(); ++attempt) {
        const DWORD error = GetLastError();
        const bool isHeld = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
                            error == ERROR_ACCESS_DENIED;  // the error of a rename over a file that is open
        if (!isHeld || attempt == kSharingAttempts) return false;
        Sleep(kSharingRetryMilliseconds);
    }
    return true;
}

// Nothing if the file is missing, unreadable or larger than kMaxXmlBytes (xml_guard.h).
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::wstring& path);

// Whether there is certainly nothing at this path. False if a drive does not answer.
[[nodiscard]] bool IsMissing(const std::wstring& path);
[[nodiscard]] bool IsReadOnly(const std::wstring& path);

// Where a file is written until it is complete.
[[nodiscard]] std::wstring UnfinishedPath(const std::wstring& path);

// A new file that disappears unless it is moved to its place. It stays open all the time, and is renamed while it is
// open if the file system allows that. So if no program has such a file open, a killed program left it behind.
class UnfinishedFile {
public:
    explicit UnfinishedFile(const std::wstring& finalPath);
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    // Null if the file could not be opened.
    FILE* Stream() const { return stream.Get(); }

    // Flushes and closes the file and replaces the target with it. False if that fails, among others when the file is
    // too large to be read back or the target is marked read-only.
    [[nodiscard]] bool Finish();

private:
    bool ReplaceTarget();
    bool ReplaceTargetOnceClosed();
    void Discard();
    void Close() { file = platform::UniqueFile(INVALID_HANDLE_VALUE); }

    const std::wstring target;
    const std::wstring path;
    platform::UniqueFile file;
    platform::Owned<FILE*, &std::fclose> stream;
    bool finished = false;
};

}  // namespace kvn::model

#include "profiles/shortcut_files.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/unique_resource.h"

namespace kvn::profiles {
namespace {

constexpr std::size_t kMaxPath = 1039;

// Identifies a folder, regardless of the path by which it was reached.
struct FolderIdentity {
    DWORD volume;
    DWORD indexHigh;
    DWORD indexLow;

    friend bool operator==(const FolderIdentity&, const FolderIdentity&) = default;
};

std::optional<FolderIdentity> IdentityOf(const std::wstring& folder) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const platform::UniqueFile opened(
        CreateFileW(folder.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION information{};
    if (!opened || !GetFileInformationByHandle(opened.Get(), &information)) return std::nullopt;
    return FolderIdentity{information.dwVolumeSerialNumber, information.nFileIndexHigh, information.nFileIndexLow};
}

// All levels share one path and one record of a found file, so a level takes hardly any stack: such a long path may go
// hundreds of folders deep.
class ShortcutSearch {
public:
    ShortcutSearch(std::wstring folder, std::vector<std::wstring>& shortcuts)
        : path(std::move(folder)), files(shortcuts) {
        path.reserve(kMaxPath);
    }

    void SearchFolder() {
        ForEachMatch(L"*.*", [this] {
            if (IsSubFolder() && (!IsLink() || EnterOnce())) SearchFolder();
        });
        ForEachMatch(L"*.lnk", [this] {
            if (!Has(FILE_ATTRIBUTE_DIRECTORY)) files.push_back(path);
        });
    }

private:
    // Visits each match in the folder that the path names. During the visit the path names the match.
    template <typename Visit>
    void ForEachMatch(const wchar_t* pattern, Visit visit) {
        const std::size_t folderLength = path.size();
        if (!Descend(pattern)) return;
        const platform::UniqueFileSearch search(FindFirstFileW(path.c_str(), &found));
        path.resize(folderLength);
        if (!search) return;
        do {
            if (!Descend(found.cFileName)) continue;
            visit();
            path.resize(folderLength);
        } while (FindNextFileW(search.Get(), &found));
    }

    bool Descend(std::wstring_view name) {
        if (path.size() + 1 + name.size() > kMaxPath) return false;
        path += L'\\';
        path += name;
        return true;
    }

    bool Has(DWORD attribute) const { return (found.dwFileAttributes & attribute) != 0; }

    bool IsSubFolder() const {
        const std::wstring_view name = found.cFileName;
        return Has(FILE_ATTRIBUTE_DIRECTORY) && name != L"." && name != L"..";
    }

    bool IsLink() const { return Has(FILE_ATTRIBUTE_REPARSE_POINT); }

    // For a link to a folder: true, once, if the link is not inside that folder.
    bool EnterOnce() {
        const std::optional<FolderIdentity> target = IdentityOf(path);
        if (!target || std::ranges::find(linked, *target) != linked.end()) return false;
        for (std::size_t end = path.rfind(L'\\'); end != std::wstring::npos && end > 0;
             end = path.rfind(L'\\', end - 1)) {
            // With the backslash, so that the topmost path is the drive's root and not its current folder.
            if (IdentityOf(path.substr(0, end + 1)) == target) return false;
        }
        linked.push_back(*target);
        return true;
    }

    std::wstring path;
    std::vector<std::wstring>& files;
    WIN32_FIND_DATAW found{};
    std::vector<FolderIdentity> linked;
};

}  // namespace

void AppendShortcutFiles(const std::wstring& folder, std::vector<std::wstring>& files) {
    ShortcutSearch(folder, files).SearchFolder();
}

}  // namespace kvn::profiles

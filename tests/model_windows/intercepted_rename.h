// Intercepts the renaming that puts a save's file in place.
#pragma once

#include <windows.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "tests/model_windows/genuine_function.h"
#include "tests/support/replaced_import.h"

namespace kvn::model::test {

inline auto GenuineSetFileInformation() {
    return Genuine<BOOL(HANDLE, FILE_INFO_BY_HANDLE_CLASS, void*, DWORD)>(L"kernel32", "SetFileInformationByHandle");
}

// Renames an open file as a save does.
inline BOOL RenameOpenFile(HANDLE file, const std::wstring& path) {
    std::vector<std::byte> request(sizeof(FILE_RENAME_INFO) + path.size() * sizeof(wchar_t));
    auto* const rename = reinterpret_cast<FILE_RENAME_INFO*>(request.data());
    rename->ReplaceIfExists = TRUE;
    rename->FileNameLength = static_cast<DWORD>(path.size() * sizeof(wchar_t));
    std::memcpy(&rename->FileName[0], path.c_str(), rename->FileNameLength);
    return GenuineSetFileInformation()(file, FileRenameInfo, rename, static_cast<DWORD>(request.size()));
}

// While it lives, the given function renames this program's open files; all other operations are unchanged.
class InterceptedRename {
public:
    explicit InterceptedRename(std::function<BOOL(HANDLE file, const std::wstring& newPath)> standIn)
        : renameInstead(std::move(standIn)) {}

    bool IsInPlace() const { return intercepted.IsInPlace(); }

private:
    BOOL Set(HANDLE file, FILE_INFO_BY_HANDLE_CLASS information, void* data, DWORD bytes) const {
        if (information != FileRenameInfo) return GenuineSetFileInformation()(file, information, data, bytes);
        const auto* const rename = static_cast<const FILE_RENAME_INFO*>(data);
        return renameInstead(file, std::wstring(&rename->FileName[0], rename->FileNameLength / sizeof(wchar_t)));
    }

    std::function<BOOL(HANDLE, const std::wstring&)> renameInstead;
    kvn::test::ReplacedImport<"SetFileInformationByHandle", BOOL(HANDLE, FILE_INFO_BY_HANDLE_CLASS, void*, DWORD)>
        intercepted{GetModuleHandleW(nullptr), [this](HANDLE file, FILE_INFO_BY_HANDLE_CLASS information, void* data,
                                                      DWORD bytes) { return Set(file, information, data, bytes); }};
};

}  // namespace kvn::model::test

#include "service/transfer/settings_replacement.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "model/file_replacement.h"
#include "model/profile_file.h"
#include "model/profile_list.h"
#include "model/registry_access.h"
#include "model/settings_store.h"
#include "platform/number_text.h"
#include "platform/unique_resource.h"

namespace kvn::service {
namespace {

constexpr int kMaxKeptFiles = 100'000;

// Makes a copy that survives a power failure.
bool CopyFlushed(const std::wstring& from, const std::wstring& to) {
    SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (!model::TryWhileShared([&] { return CopyFileW(from.c_str(), to.c_str(), FALSE) != FALSE; })) return false;
    SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL);
    const platform::UniqueFile copy(CreateFileW(to.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                                FILE_ATTRIBUTE_NORMAL, nullptr));
    return copy && FlushFileBuffers(copy.Get()) != FALSE;
}

bool Move(const std::wstring& from, const std::wstring& to, DWORD flags) {
    return model::TryWhileShared(
        [&] { return MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH) != FALSE; });
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

SettingsReplacement::SettingsReplacement(const MouseModel& replacedMouse)
    : mouse(replacedMouse), path(ProfileFilePath(replacedMouse)) {}

SettingsReplacement::Result SettingsReplacement::Run(model::ProfileSet profiles) {
    profiles.front().vid = static_cast<std::uint16_t>(mouse.vid);
    profiles.front().pid = static_cast<std::uint16_t>(mouse.pid);
    const auto writes = model::AllValues(profiles[model::SelectedProfileOf(profiles)].settings);
    const KeptValues values(mouse, writes);
    if (!values.IsComplete() || !KeepFile()) return Result::NothingChanged;

    bool isFileReplaced = false;
    const bool isDone = values.Remove() && (isFileReplaced = model::SaveProfileFile(path, profiles)) &&
                        std::ranges::all_of(writes, [this](const model::RegistryWrite& write) {
                            return model::CarryOut(write, mouse.vid, mouse.pid);
                        });
    if (isDone) return Result::Done;
    return Undo(values, isFileReplaced) ? Result::NothingChanged : Result::NotUndone;
}

bool SettingsReplacement::KeepFile() {
    model::MakeFolder(model::SettingsFolder());
    model::FinishOrRemoveInterruptedSave(path);
    if (model::IsMissing(path)) return true;
    const std::wstring stem = path.substr(0, path.rfind(L'.')) + L".before-import-";
    for (int number = 1; number <= kMaxKeptFiles; ++number) {
        const std::wstring kept = stem + platform::NumberText(number) + L".xml";
        if (!Exists(kept)) return KeepFileAs(kept);
    }
    return false;
}

// The copy gets its final name when it is complete. The next import overwrites what a killed program has left of it.
bool SettingsReplacement::KeepFileAs(const std::wstring& kept) {
    const std::wstring unfinished = model::UnfinishedPath(kept);
    if (CopyFlushed(path, unfinished) && Move(unfinished, kept, 0)) {
        keptFile = kept;
        return true;
    }
    DeleteFileW(unfinished.c_str());
    return false;
}

// Restores the file first, because it counts until the registry's values are back.
bool SettingsReplacement::Undo(const KeptValues& values, bool isFileReplaced) {
    const bool isFileBack = UndoFile(isFileReplaced);
    const bool areValuesBack = values.Restore();
    return isFileBack && areValuesBack;
}

bool SettingsReplacement::UndoFile(bool isFileReplaced) {
    if (keptFile.empty()) return !isFileReplaced || DeleteFileW(path.c_str()) != FALSE;
    if (!isFileReplaced) {
        DeleteFileW(keptFile.c_str());
    } else if (!Move(keptFile, path, MOVEFILE_REPLACE_EXISTING)) {
        return false;
    }
    keptFile = path;
    return true;
}

}  // namespace kvn::service

#include "model/file_replacement.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "model/xml_guard.h"

namespace kvn::model {
namespace {

constexpr wchar_t kUnfinishedSuffix[] = L".saving";
constexpr std::size_t kWriteBufferBytes = std::size_t{64} * 1024;

platform::UniqueFile OpenToRead(const std::wstring& path) {
    HANDLE file = INVALID_HANDLE_VALUE;
    TryWhileShared([&] {
        file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        return file != INVALID_HANDLE_VALUE;
    });
    return platform::UniqueFile(file);
}

// Creates the file, or empties what an earlier save left behind. No other program can open, rename or delete it.
platform::UniqueFile CreateUnshared(const std::wstring& path) {
    // A file that is marked read-only, hidden or system cannot be emptied.
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    HANDLE file = INVALID_HANDLE_VALUE;
    TryWhileShared([&] {
        file = CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL | FILE_FLAG_WRITE_THROUGH, nullptr);
        return file != INVALID_HANDLE_VALUE;
    });
    return platform::UniqueFile(file);
}

using UniqueStream = platform::Owned<FILE*, &std::fclose>;

// A separate stream for an open file; empty if there is none to be had.
UniqueStream OpenStream(HANDLE file) {
    platform::UniqueKernelObject streamsOwn;
    if (!DuplicateHandle(GetCurrentProcess(), file, GetCurrentProcess(), streamsOwn.Receive(), 0, FALSE,
                         DUPLICATE_SAME_ACCESS))
        return {};
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(streamsOwn.Get()), _O_TEXT);
    if (descriptor == -1) return {};
    streamsOwn.Release();  // the descriptor owns it now
    UniqueStream stream(_wfdopen(descriptor, L"wt"));
    if (!stream) static_cast<void>(_close(descriptor));
    return stream;
}

// Renames an open file, and replaces a file that already has the name.
bool RenameOver(HANDLE file, const std::wstring& target) {
    const std::size_t nameBytes = target.size() * sizeof(wchar_t);
    std::vector<std::byte> request(sizeof(FILE_RENAME_INFO) + nameBytes);
    auto* const rename = reinterpret_cast<FILE_RENAME_INFO*>(request.data());
    rename->ReplaceIfExists = TRUE;
    rename->FileNameLength = static_cast<DWORD>(nameBytes);
    std::memcpy(&rename->FileName[0], target.c_str(), nameBytes);
    return SetFileInformationByHandle(file, FileRenameInfo, rename, static_cast<DWORD>(request.size())) != FALSE;
}

// The errors of file systems that cannot rename an open file, such as those that a web server or a program provides.
constexpr std::array<DWORD, 4> kRenameUnknown{ERROR_NOT_SUPPORTED, ERROR_INVALID_PARAMETER, ERROR_INVALID_FUNCTION,
                                              ERROR_CALL_NOT_IMPLEMENTED};

}  // namespace

std::optional<std::string> ReadWholeFile(const std::wstring& path) {
    const platform::UniqueFile file = OpenToRead(path);
    // A pipe has a size too, but reading it would wait for data.
    if (!file || GetFileType(file.Get()) != FILE_TYPE_DISK) return std::nullopt;
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file.Get(), &size)) return std::nullopt;
    if (size.QuadPart > static_cast<LONGLONG>(kMaxXmlBytes)) return std::nullopt;

    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) return std::nullopt;
    bytes.resize(read);
    return bytes;
}

bool IsMissing(const std::wstring& path) {
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

std::wstring UnfinishedPath(const std::wstring& path) {
    return path + kUnfinishedSuffix;
}

UnfinishedFile::UnfinishedFile(const std::wstring& finalPath)
    : target(finalPath), path(UnfinishedPath(finalPath)), file(CreateUnshared(path)) {
    if (file) stream = OpenStream(file.Get());
    if (stream) static_cast<void>(std::setvbuf(stream.Get(), nullptr, _IOFBF, kWriteBufferBytes));
}

UnfinishedFile::~UnfinishedFile() {
    stream.Reset();
    if (file && !finished) Discard();
}

bool UnfinishedFile::Finish() {
    FILE* const written = stream.Release();
    const bool flushed = std::fflush(written) == 0 && std::ferror(written) == 0 && _commit(_fileno(written)) == 0;
    const bool isReadable = _filelengthi64(_fileno(written)) <= static_cast<std::int64_t>(kMaxXmlBytes);
    const bool closed = std::fclose(written) == 0;
    finished = flushed && isReadable && closed && ReplaceTarget();
    return finished;
}

bool UnfinishedFile::ReplaceTarget() {
    if (IsReadOnly(target)) return false;
    if (TryWhileShared([this] { return RenameOver(file.Get(), target); })) return true;
    const bool isUnknown = std::ranges::find(kRenameUnknown, GetLastError()) != kRenameUnknown.end();
    return isUnknown && ReplaceTargetOnceClosed();
}

bool UnfinishedFile::ReplaceTargetOnceClosed() {
    Close();
    const bool replaced = TryWhileShared([this] {
        return MoveFileExW(path.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE;
    });
    if (!replaced) DeleteFileW(path.c_str());
    return replaced;
}

// Removes the file before another program can open it, or at least when it is closed.
void UnfinishedFile::Discard() {
    FILE_DISPOSITION_INFO disposition{TRUE};
    if (SetFileInformationByHandle(file.Get(), FileDispositionInfo, &disposition, sizeof disposition)) return;
    Close();
    DeleteFileW(path.c_str());
}

}  // namespace kvn::model

#include "model/profile_file.h"

#include <io.h>
#include <share.h>
#include <shlwapi.h>
#include <tinyxml.h>
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

#include "model/locale_codec.h"
#include "model/profile_document.h"
#include "model/registry_records.h"
#include "model/xml_guard.h"
#include "platform/module.h"
#include "platform/texts.h"
#include "platform/unique_resource.h"
#include "resources/resource.h"

namespace kvn::model {
namespace {

constexpr wchar_t kUnfinishedSuffix[] = L".saving";
constexpr std::size_t kWriteBufferBytes = std::size_t{64} * 1024;
constexpr int kMaxBrokenFiles = 1000;

// A virus scanner or an indexer may hold a file for a moment: so long is waited for it.
constexpr int kSharingAttempts = 10;
constexpr DWORD kSharingRetryMilliseconds = 20;

// Tries again while another program holds the file; the result of the last try.
template <typename Try>
bool TryWhileShared(const Try& tryOnce) {
    for (int attempt = 1; !tryOnce(); ++attempt) {
        const DWORD error = GetLastError();
        const bool isHeld = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
                            error == ERROR_ACCESS_DENIED;  // what a rename over a held file says
        if (!isHeld || attempt == kSharingAttempts) return false;
        Sleep(kSharingRetryMilliseconds);
    }
    return true;
}

platform::UniqueFile OpenToRead(const std::wstring& path) {
    HANDLE file = INVALID_HANDLE_VALUE;
    TryWhileShared([&] {
        file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        return file != INVALID_HANDLE_VALUE;
    });
    return platform::UniqueFile(file);
}

std::optional<std::string> ReadWholeFile(const std::wstring& path) {
    const platform::UniqueFile file = OpenToRead(path);
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.Get(), &size)) return std::nullopt;
    if (size.QuadPart > static_cast<LONGLONG>(kMaxXmlBytes)) return std::nullopt;

    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) return std::nullopt;
    bytes.resize(read);
    return bytes;
}

// A new file that is written from its start and vanishes unless it is moved to its place.
class UnfinishedFile {
public:
    explicit UnfinishedFile(const std::wstring& finalPath)
        : target(finalPath), path(finalPath + kUnfinishedSuffix), stream(_wfsopen(path.c_str(), L"w", _SH_DENYRW)) {
        if (stream) static_cast<void>(std::setvbuf(stream, nullptr, _IOFBF, kWriteBufferBytes));
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile() {
        if (stream) static_cast<void>(std::fclose(stream));
        if (!finished) DeleteFileW(path.c_str());
    }

    // Null when the file could not be opened.
    FILE* Stream() const { return stream; }

    // Flushes and closes the file and puts it in the target's place; false when it is too large to be read back.
    bool Finish() {
        const bool flushed = std::fflush(stream) == 0 && std::ferror(stream) == 0 && _commit(_fileno(stream)) == 0;
        const bool isReadable = _filelengthi64(_fileno(stream)) <= static_cast<std::int64_t>(kMaxXmlBytes);
        const bool closed = std::fclose(std::exchange(stream, nullptr)) == 0;
        finished = flushed && isReadable && closed && ReplaceTarget();
        return finished;
    }

private:
    bool ReplaceTarget() const {
        constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
        return TryWhileShared([this] { return MoveFileExW(path.c_str(), target.c_str(), kFlags) != FALSE; });
    }

    const std::wstring& target;
    std::wstring path;
    FILE* stream;
    bool finished = false;
};

}  // namespace

std::size_t LoadProfileFile(const std::wstring& path, ProfileSet& list) {
    list.clear();
    auto bytes = ReadWholeFile(path);
    if (!bytes) return 0;
    const LocaleCodec codec = LocaleCodec::OfHostProgram();
    const std::wstring arbitraryKey = platform::LoadText(platform::ThisModule(), IDS_FUNCTION_ARBITRARY_KEY);
    list = ParseProfileDocument(std::move(*bytes), NewProfileRecord(), {codec, arbitraryKey});
    return list.size();
}

bool SaveProfileFile(const std::wstring& path, const ProfileSet& list) {
    TiXmlDocument document;
    BuildProfileDocument(list, LocaleCodec::OfHostProgram(), document);
    UnfinishedFile file(path);
    return file.Stream() != nullptr && document.SaveFile(file.Stream()) && file.Finish();
}

bool SetAsideProfileFile(const std::wstring& path) {
    if (!PathFileExistsW(path.c_str())) return true;
    // The file may have been in use when it was loaded, and be as good as ever.
    ProfileSet readable;
    if (LoadProfileFile(path, readable) > 0) return false;
    const std::wstring stem = path.substr(0, path.rfind(L'.'));
    for (int number = 1; number <= kMaxBrokenFiles; ++number) {
        const std::wstring aside = stem + L".broken-" + std::to_wstring(number) + L".xml";
        if (PathFileExistsW(aside.c_str())) continue;
        return TryWhileShared(
            [&] { return MoveFileExW(path.c_str(), aside.c_str(), MOVEFILE_WRITE_THROUGH) != FALSE; });
    }
    return false;
}

}  // namespace kvn::model

#include "model/profile_file.h"

#include <shlwapi.h>
#include <tinyxml.h>
#include <windows.h>

#include <utility>

#include "model/ascii_codec.h"
#include "model/file_replacement.h"
#include "model/locale_codec.h"
#include "model/profile_document.h"
#include "model/registry_access.h"
#include "model/xml_guard.h"
#include "platform/module.h"
#include "platform/number_text.h"
#include "platform/texts.h"
#include "resources/resource.h"

namespace kvn::model {
namespace {

constexpr int kMaxBrokenFiles = 1000;

bool Save(const std::wstring& path, const ProfileSet& list, const TextCodec& codec) {
    TiXmlDocument document;
    if (BuildProfileDocument(list, codec, document) > kMaxXmlElements) return false;
    UnfinishedFile file(path);
    return file.Stream() != nullptr && document.SaveFile(file.Stream()) && file.Finish();
}

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
    return Save(path, list, LocaleCodec::OfHostProgram());
}

bool ExportProfileFile(const std::wstring& path, const ProfileSet& list) {
    return Save(path, list, AsciiCodec());
}

void FinishOrRemoveInterruptedSave(const std::wstring& path) {
    const std::wstring unfinished = UnfinishedPath(path);
    ProfileSet saved;
    if (IsMissing(path) && LoadProfileFile(unfinished, saved) > 0) {
        // Never replaces a file that another page has meanwhile put there. If it cannot be moved, it stays: no other
        // file has the profiles.
        TryWhileShared([&] { return MoveFileExW(unfinished.c_str(), path.c_str(), MOVEFILE_WRITE_THROUGH) != FALSE; });
    } else {
        SetFileAttributesW(unfinished.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(unfinished.c_str());
    }
}

bool SetAsideProfileFile(const std::wstring& path) {
    if (IsMissing(path)) return true;
    // The file may be intact, and only have been in use when it was loaded.
    ProfileSet readable;
    if (LoadProfileFile(path, readable) > 0) return false;
    const std::wstring stem = path.substr(0, path.rfind(L'.'));
    for (int number = 1; number <= kMaxBrokenFiles; ++number) {
        const std::wstring aside = stem + L".broken-" + platform::NumberText(number) + L".xml";
        if (PathFileExistsW(aside.c_str())) continue;
        return TryWhileShared(
            [&] { return MoveFileExW(path.c_str(), aside.c_str(), MOVEFILE_WRITE_THROUGH) != FALSE; });
    }
    return false;
}

}  // namespace kvn::model

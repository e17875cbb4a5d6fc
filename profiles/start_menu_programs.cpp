#include "profiles/start_menu_programs.h"

#include <shlobj.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>

#include "platform/com_pointer.h"
#include "platform/special_folder.h"
#include "profiles/shortcut_files.h"
#include "profiles/shortcut_target.h"

namespace kvn::profiles {
namespace {

using model::ApplicationEntry;

constexpr std::size_t kPathBuffer = 1040;
constexpr std::size_t kPartBuffer = 260;
constexpr wchar_t kProgramExtension[] = L".exe";
constexpr wchar_t kAdvertisedMark = L'{';  // the target of an advertised shortcut lies in a folder named by a GUID

// In the order in which they are searched.
constexpr std::array<int, 2> kProgramFolders{CSIDL_COMMON_PROGRAMS, CSIDL_PROGRAMS};

struct PathParts {
    std::array<wchar_t, kPathBuffer> folder{};  // without the drive
    std::array<wchar_t, kPartBuffer> name{};
    std::array<wchar_t, kPartBuffer> extension{};  // with its dot
};

PathParts Split(const std::wstring& path) {
    PathParts parts;
    // On failure all parts are empty.
    _wsplitpath_s(path.c_str(), nullptr, 0, parts.folder.data(), parts.folder.size(), parts.name.data(),
                  parts.name.size(), parts.extension.data(), parts.extension.size());
    return parts;
}

void AppendProgramOf(const std::wstring& shortcut, std::vector<ApplicationEntry>& programs) {
    std::wstring target = ShortcutTarget(shortcut);
    const PathParts parts = Split(target);
    if (std::wstring_view(parts.extension.data()) != kProgramExtension) return;
    if (std::wstring_view(parts.folder.data()).find(kAdvertisedMark) != std::wstring_view::npos) {
        std::wstring program = AdvertisedProgram(shortcut);
        if (!program.empty()) target = std::move(program);
    }
    programs.push_back({Split(shortcut).name.data(), std::move(target)});
}

}  // namespace

void AppendStartMenuPrograms(HWND owner, std::vector<ApplicationEntry>& programs) {
    const platform::ComApartment apartment;
    if (!apartment) return;  // shortcuts cannot be read without COM
    for (const int folder : kProgramFolders) {
        const std::wstring path = platform::SpecialFolder(folder, owner);
        if (path.empty()) continue;
        std::vector<std::wstring> shortcuts;
        AppendShortcutFiles(path, shortcuts);
        for (const std::wstring& shortcut : shortcuts) AppendProgramOf(shortcut, programs);
    }
    std::sort(programs.begin(), programs.end(),
              [](const ApplicationEntry& a, const ApplicationEntry& b) { return a.name < b.name; });
}

}  // namespace kvn::profiles

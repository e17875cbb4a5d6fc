#include "tests/end_to_end/start_menu_shortcuts.h"

#include <windows.h>

#include <shlobj.h>

#include <array>

#include "platform/com_pointer.h"
#include "tests/end_to_end/stored_state.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

std::wstring ProgramsOfStartMenu() {
    std::array<wchar_t, MAX_PATH> path{};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_PROGRAMS, nullptr, SHGFP_TYPE_CURRENT, path.data()))) {
        throw StoryError("the shell knows no Start menu");
    }
    return path.data();
}

}  // namespace

StartMenuShortcuts::StartMenuShortcuts(const std::wstring& folderName)
    : folder(ProgramsOfStartMenu() + L'\\' + folderName + L'\\') {
    if (!CreateDirectoryW(folder.c_str(), nullptr)) throw StoryError("cannot make " + test::Narrow(folder));
}

StartMenuShortcuts::~StartMenuShortcuts() {
    RemoveFolder(folder);
}

void StartMenuShortcuts::Add(const std::wstring& name, const std::wstring& target) const {
    const platform::ComApartment apartment;
    platform::ComPointer<IShellLinkW> link;
    platform::ComPointer<IPersistFile> file;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                reinterpret_cast<void**>(link.Receive()))) ||
        FAILED(link.Get()->SetPath(target.c_str())) ||
        FAILED(link.Get()->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(file.Receive()))) ||
        FAILED(file.Get()->Save((folder + name + L".lnk").c_str(), TRUE))) {
        throw StoryError("cannot save the shortcut " + test::Narrow(name));
    }
}

}  // namespace kvn::end_to_end

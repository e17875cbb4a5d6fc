#include "tests/profiles/start_menu.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/com_pointer.h"
#include "tests/support/platform.h"
#include "tests/support/started_process.h"
#include "tests/support/waiting.h"

namespace kvn::test {
namespace {

constexpr wchar_t kShellFolders[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";

void SetShellFolder(HKEY root, const wchar_t* name, const std::wstring& folder) {
    const auto bytes = static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t));
    RegSetKeyValueW(root, kShellFolders, name, REG_SZ, folder.c_str(), bytes);
}

// Wine cannot make links, and takes a tree with links for an endless one when it removes it, so programs of the host do
// both. They have no handles to wait for. On Windows the command shell does the work.
constexpr wchar_t kWinesHost[] = L"Z:\\bin\\";

// The target is relative to the link's folder, with slashes.
std::wstring MakingLink(const std::wstring& link, std::wstring target) {
    if (RunsUnderWine()) return kWinesHost + (L"ln -s -- " + target + L" " + link);
    std::replace(target.begin(), target.end(), L'/', L'\\');
    return L"cmd.exe /c mklink /J " + link + L" " + target;
}

std::wstring RemovingFolder(const std::wstring& folder) {
    return RunsUnderWine() ? kWinesHost + (L"rm -rf -- " + folder) : L"cmd.exe /c rd /s /q " + folder;
}

void RunOnHost(const std::wstring& folder, const std::wstring& line) {
    StartedProcess started = StartProcess(line, 0, folder.c_str());
    if (!started.hasStarted) throw std::runtime_error("a program of the host cannot be run");
    if (!RunsUnderWine()) return;
    // Wine leaves the handles of its host's programs undefined. To close them could close any handle of this process.
    started.process.Release();
    started.thread.Release();
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::wstring TemporaryFolder() {
    wchar_t folder[MAX_PATH + 1]{};
    GetTempPathW(MAX_PATH, folder);
    return std::wstring(folder).substr(0, std::wstring(folder).size() - 1);
}

std::wstring UniqueName() {
    static int number = 0;
    return L"kvn-scratch-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number);
}

std::wstring ParentOf(const std::wstring& path) {
    return path.substr(0, path.rfind(L'\\'));
}

}  // namespace

ScratchFolder::ScratchFolder() : parent(TemporaryFolder()), path(parent + L"\\" + UniqueName()) {
    std::filesystem::create_directories(path);
}

ScratchFolder::~ScratchFolder() {
    RunOnHost(parent, RemovingFolder(path.substr(parent.size() + 1)));
    EXPECT_TRUE(ComesTrue([this] { return !Exists(path); })) << "a folder of the test is left behind";
}

std::wstring ScratchFolder::AddFolder(const std::wstring& name) const {
    std::filesystem::create_directories(PathOf(name));
    return PathOf(name);
}

std::wstring ScratchFolder::AddDeepFolder(const std::wstring& name, std::size_t levels) const {
    std::wstring below = L".";
    std::wstring deepest = path;
    for (std::size_t level = 0; level < levels; ++level) {
        below += L"/" + name;
        deepest += L"\\" + name;
        if (!RunsUnderWine()) CreateDirectoryW((L"\\\\?\\" + deepest).c_str(), nullptr);
    }
    if (RunsUnderWine()) RunOnHost(path, kWinesHost + (L"mkdir -p -- " + below));
    Await("the deep folder", [&] { return Exists(L"\\\\?\\" + deepest); });
    return deepest;
}

std::wstring ScratchFolder::AddFile(const std::wstring& name, std::string_view content) const {
    const std::wstring file = PathOf(name);
    std::filesystem::create_directories(ParentOf(file));
    std::ofstream made(std::filesystem::path(file), std::ios::binary);
    if (!made.write(content.data(), static_cast<std::streamsize>(content.size())).flush()) {
        throw std::runtime_error("a file cannot be made");
    }
    return file;
}

std::wstring ScratchFolder::AddFolderLink(const std::wstring& name, const std::wstring& target) const {
    const std::wstring link = PathOf(name);
    std::filesystem::create_directories(ParentOf(link));
    RunOnHost(ParentOf(link), MakingLink(link.substr(link.rfind(L'\\') + 1), target));
    Await("the link", [&] { return Exists(link); });
    return link;
}

std::wstring ScratchFolder::AddShortcut(const std::wstring& name, const std::wstring& target) const {
    const std::wstring file = PathOf(name);
    std::filesystem::create_directories(ParentOf(file));
    const platform::ComApartment apartment;
    platform::ComPointer<IShellLinkW> link;
    platform::ComPointer<IPersistFile> persistent;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                reinterpret_cast<void**>(link.Receive()))) ||
        FAILED(link.Get()->SetPath(target.c_str())) ||
        FAILED(link.Get()->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(persistent.Receive()))) ||
        FAILED(persistent.Get()->Save(file.c_str(), TRUE))) {
        throw std::runtime_error("a shortcut cannot be saved");
    }
    return file;
}

StartMenu::StartMenu() {
    SetProgramFolders(common.Path(), own.Path());
}

void SetProgramFolders(const std::wstring& common, const std::wstring& own) {
    SetShellFolder(HKEY_LOCAL_MACHINE, L"Common Programs", common);
    SetShellFolder(HKEY_CURRENT_USER, L"Programs", own);
}

std::string ReadBytes(const std::wstring& file) {
    std::ifstream opened(std::filesystem::path(file), std::ios::binary);
    if (!opened) throw std::runtime_error("a file cannot be read");
    return {std::istreambuf_iterator<char>(opened), {}};
}

}  // namespace kvn::test

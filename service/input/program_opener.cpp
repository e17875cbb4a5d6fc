#include "service/input/program_opener.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <algorithm>
#include <array>

#include "platform/com_pointer.h"
#include "platform/shell_opening.h"
#include "service/input/done_texts.h"

namespace kvn::service {
namespace {

std::wstring WindowsFolder() {
    std::array<wchar_t, MAX_PATH> path{};
    return {path.data(), GetSystemWindowsDirectoryW(path.data(), MAX_PATH)};
}

std::wstring SystemFolder() {
    std::array<wchar_t, MAX_PATH> path{};
    return {path.data(), GetSystemDirectoryW(path.data(), MAX_PATH)};
}

// The full path of the file, so that no other file of that name is opened; the bare name if the file is missing.
std::wstring PathOf(const std::wstring& folder, const wchar_t* file) {
    const std::wstring path = folder + L'\\' + file;
    return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES ? file : path;
}

std::wstring ExecutableOf(const wchar_t* association) {
    std::array<wchar_t, 1024> path{};
    DWORD length = path.size();
    const HRESULT result =
        AssocQueryStringW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, association, L"open", path.data(), &length);
    return SUCCEEDED(result) ? path.data() : L"";
}

// The user's choice for web pages; empty if there is none.
std::wstring ChosenBrowserClass() {
    constexpr wchar_t kKey[] = L"Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\http\\UserChoice";
    std::array<wchar_t, 256> name{};
    DWORD bytes = sizeof name;
    const LSTATUS result =
        RegGetValueW(HKEY_CURRENT_USER, kKey, L"ProgId", RRF_RT_REG_SZ, nullptr, name.data(), &bytes);
    return result == ERROR_SUCCESS ? name.data() : L"";
}

std::wstring BrowserPath() {
    const std::wstring chosen = ChosenBrowserClass();
    const std::wstring path = chosen.empty() ? L"" : ExecutableOf(chosen.c_str());
    return path.empty() ? ExecutableOf(L"http") : path;
}

std::wstring ExplorerPath() {
    return PathOf(WindowsFolder(), L"explorer.exe");
}

std::wstring ControlPath() {
    return PathOf(SystemFolder(), L"control.exe");
}

std::wstring MagnifierPath() {
    return PathOf(SystemFolder(), L"magnify.exe");
}

struct ProgramRow {
    Program program;
    std::wstring (*path)();
    const wchar_t* arguments;
};

constexpr std::array<ProgramRow, 6> kPrograms{{
    {Program::Computer, ExplorerPath, L"shell:MyComputerFolder"},
    {Program::Browser, BrowserPath, nullptr},
    {Program::Explorer, ExplorerPath, nullptr},
    {Program::ControlPanel, ControlPath, nullptr},
    {Program::Printers, ExplorerPath, L"shell:PrintersFolder"},
    {Program::Magnifier, MagnifierPath, nullptr},
}};

// The program starts in a folder of Windows. The service's folder could not be removed while a program has it as its
// own.
bool Open(const std::wstring& path, const wchar_t* arguments) {
    return platform::ShellOpen(path, arguments, WindowsFolder().c_str());
}

std::wstring NameOf(const std::wstring& path, const wchar_t* arguments) {
    const std::wstring name = path.substr(path.find_last_of(L'\\') + 1);
    return arguments == nullptr ? name : name + L' ' + arguments;
}

}  // namespace

std::wstring OpenProgram(Program program) {
    const auto row = std::ranges::find(kPrograms, program, &ProgramRow::program);
    if (row == kPrograms.end()) return kNothingDone;
    const platform::ComApartment apartment;
    const std::wstring path = row->path();
    if (path.empty()) return L"no program to open";
    const std::wstring name = NameOf(path, row->arguments);
    return Open(path, row->arguments) ? L"opened " + name : L"could not open " + name;
}

}  // namespace kvn::service

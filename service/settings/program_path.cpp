#include "service/settings/program_path.h"

#include <string_view>

#include "platform/unique_resource.h"
#include "platform/window_text.h"

namespace kvn::service {
namespace {

constexpr DWORD kLongestPath = 32768;  // of any path that Windows can open
constexpr wchar_t kStoreAppFrame[] = L"ApplicationFrameWindow";
constexpr wchar_t kStoreApp[] = L"Windows.UI.Core.CoreWindow";
constexpr std::wstring_view kAnyPathPrefix = L"\\\\?\\";
constexpr std::wstring_view kAnyServerPrefix = L"\\\\?\\UNC\\";
constexpr std::wstring_view kServerPrefix = L"\\\\";
constexpr std::wstring_view kFolderMarks = L"\\/:";

bool IsStoreAppFrame(HWND window) {
    return platform::ClassNameOf(window) == kStoreAppFrame;
}

std::wstring WithoutPrefix(const std::wstring& path) {
    if (path.starts_with(kAnyServerPrefix)) return std::wstring(kServerPrefix) + path.substr(kAnyServerPrefix.size());
    return path.starts_with(kAnyPathPrefix) ? path.substr(kAnyPathPrefix.size()) : path;
}

// The path of an open file behind all links; empty if Windows does not report it.
std::wstring FinalPath(HANDLE file) {
    std::wstring found(kLongestPath, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(file, found.data(), kLongestPath, VOLUME_NAME_DOS);
    found.resize(length < kLongestPath ? length : 0);
    return WithoutPrefix(found);
}

std::wstring WithLongNames(const std::wstring& path) {
    std::wstring found(kLongestPath, L'\0');
    const DWORD length = GetLongPathNameW(path.c_str(), found.data(), kLongestPath);
    if (length == 0 || length >= kLongestPath) return path;
    found.resize(length);
    return found;
}

bool HasFolder(const std::wstring& entry) {
    return entry.find_first_of(kFolderMarks) != std::wstring::npos;
}

std::wstring FileNameOf(const std::wstring& path) {
    return path.substr(path.find_last_of(kFolderMarks) + 1);
}

// A server that is down takes seconds to fail.
bool IsRemote(const std::wstring& path) {
    constexpr std::size_t kRootLength = 3;  // "C:\"
    return path.starts_with(kServerPrefix) || GetDriveTypeW(path.substr(0, kRootLength).c_str()) == DRIVE_REMOTE;
}

}  // namespace

std::wstring ProgramOfProcess(DWORD processId) {
    const platform::UniqueKernelObject process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    if (!process) return {};
    std::wstring path(kLongestPath, L'\0');
    DWORD length = kLongestPath;
    if (!QueryFullProcessImageNameW(process.Get(), 0, path.data(), &length)) return {};
    path.resize(length);
    return path;
}

DWORD ProcessOfWindow(HWND window) {
    if (IsStoreAppFrame(window)) window = FindWindowExW(window, nullptr, kStoreApp, nullptr);
    DWORD processId = 0;
    if (window) GetWindowThreadProcessId(window, &processId);
    return processId;
}

std::wstring ResolvedPath(const std::wstring& path) {
    const platform::UniqueFile file(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return path;
    const std::wstring found = FinalPath(file.Get());
    return WithLongNames(found.empty() ? path : found);
}

bool IsSameText(const std::wstring& left, const std::wstring& right) {
    return CompareStringOrdinal(left.c_str(), static_cast<int>(left.size()), right.c_str(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

void ProgramComparison::SetProgram(const std::wstring& path) {
    if (path == program) return;
    program = path;
    resolvedProgram = path.empty() ? path : ResolvedPath(path);
}

bool ProgramComparison::IsProgram(const std::wstring& entry) {
    if (program.empty() || entry.empty()) return false;
    if (!HasFolder(entry)) return IsFileName(entry);
    if (IsSameText(entry, program) || IsSameText(entry, resolvedProgram)) return true;
    return IsWorthLooking(entry) && IsSameText(Resolved(entry), resolvedProgram);
}

// A program that was started through a link has two names.
bool ProgramComparison::IsFileName(const std::wstring& entry) const {
    return IsSameText(entry, FileNameOf(program)) || IsSameText(entry, FileNameOf(resolvedProgram));
}

bool ProgramComparison::IsWorthLooking(const std::wstring& entry) const {
    return !IsRemote(entry) || IsSameText(FileNameOf(entry), FileNameOf(resolvedProgram));
}

const std::wstring& ProgramComparison::Resolved(const std::wstring& entry) {
    const auto known = resolvedEntries.find(entry);
    if (known != resolvedEntries.end()) return known->second;
    return resolvedEntries.emplace(entry, ResolvedPath(entry)).first->second;
}

}  // namespace kvn::service

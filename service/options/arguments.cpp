#include "service/options/arguments.h"

#include <windows.h>

#include <shellapi.h>

#include "platform/unique_resource.h"

namespace kvn::service {
namespace {

constexpr DWORD kLongestPath = 32767;

// Doubles backslashes before a quote, including the closing one; elsewhere they stay single.
void AppendQuoted(std::wstring& line, const std::wstring& argument) {
    line += L'"';
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        if (character == L'"') line.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        line += character;
    }
    line.append(backslashes, L'\\') += L'"';
}

// Windows accepts longer paths only in this form. While a file is being saved, its name is longer for a while.
std::wstring WithoutLimit(const std::wstring& path) {
    constexpr std::size_t kLongestPlainPath = MAX_PATH - 16;
    constexpr std::wstring_view kServer = LR"(\\)";
    constexpr std::wstring_view kDevice = LR"(\\.\)";
    constexpr std::wstring_view kUnlimited = LR"(\\?\)";
    if (path.size() <= kLongestPlainPath || path.starts_with(kUnlimited) || path.starts_with(kDevice)) return path;
    if (path.starts_with(kServer)) return LR"(\\?\UNC\)" + path.substr(kServer.size());
    return std::wstring(kUnlimited) + path;
}

}  // namespace

std::vector<std::wstring> Arguments() {
    return SplitCommandLine(GetCommandLineW());
}

std::vector<std::wstring> SplitCommandLine(const std::wstring& commandLine) {
    int count = 0;
    const platform::Owned<wchar_t**, &LocalFree> words{CommandLineToArgvW(commandLine.c_str(), &count)};
    if (!words || count < 1) return {};
    return {words.Get() + 1, words.Get() + count};
}

std::wstring Quoted(std::span<const std::wstring> arguments) {
    std::wstring line;
    for (const std::wstring& argument : arguments) {
        if (!line.empty()) line += L' ';
        AppendQuoted(line, argument);
    }
    return line;
}

std::wstring FullPath(const std::wstring& path) {
    std::wstring full(kLongestPath, L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), kLongestPath, full.data(), nullptr);
    return length == 0 || length >= kLongestPath ? path : WithoutLimit(full.substr(0, length));
}

}  // namespace kvn::service

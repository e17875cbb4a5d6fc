#include "tools/control_panel/host_options.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>
#include <iterator>

#include "tools/control_panel/host_error.h"

namespace kvn::control_panel {
namespace {

constexpr wchar_t kUsage[] =
    L"\nUsage: control_panel [--dll FILE] [--tab INDEX] [--focus CONTROL_ID] [--screenshot FILE.png]"
    L"\n                     [--ready-file FILE]"
    L"\n       control_panel --register FILE"
    L"\n       control_panel --unregister";

[[noreturn]] void RefuseUsage(const std::wstring& text) {
    throw HostError{text + kUsage, kExitUsage};
}

std::wstring FullPath(const std::wstring& path) {
    std::wstring full(path.size() + MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    if (length > full.size()) {
        full.resize(length);
        length = GetFullPathNameW(path.c_str(), length, full.data(), nullptr);
    }
    if (length == 0 || length > full.size()) RefuseUsage(L"\"" + path + L"\" is not a file name.");
    full.resize(length);
    return full;
}

int Number(const std::wstring& text) {
    wchar_t* end = nullptr;
    const long number = std::wcstol(text.c_str(), &end, 10);
    if (text.empty() || *end != L'\0' || number < 0 || number > 0xFFFF) {
        RefuseUsage(L"\"" + text + L"\" is not a number from 0 to 65535.");
    }
    return static_cast<int>(number);
}

struct OptionRow {
    const wchar_t* name;
    bool takesValue;
    void (*apply)(Options& options, const std::wstring& value);
};

constexpr OptionRow kOptions[] = {
    {L"--dll", true, [](Options& options, const std::wstring& value) { options.dll = FullPath(value); }},
    {L"--register", true,
     [](Options& options, const std::wstring& value) {
         options.action = Action::Register;
         options.dll = FullPath(value);
     }},
    {L"--unregister", false, [](Options& options, const std::wstring&) { options.action = Action::Unregister; }},
    {L"--screenshot", true, [](Options& options, const std::wstring& value) { options.screenshot = FullPath(value); }},
    {L"--tab", true, [](Options& options, const std::wstring& value) { options.tab = Number(value); }},
    {L"--focus", true, [](Options& options, const std::wstring& value) { options.focus = Number(value); }},
    {L"--ready-file", true, [](Options& options, const std::wstring& value) { options.readyFile = FullPath(value); }},
};

const OptionRow& FindOption(const std::wstring& name) {
    const auto row = std::ranges::find(kOptions, name, &OptionRow::name);
    if (row == std::end(kOptions)) RefuseUsage(L"Unknown option \"" + name + L"\".");
    return *row;
}

}  // namespace

Options ParseOptions(const std::vector<std::wstring>& arguments) {
    Options options;
    std::size_t next = 0;
    while (next < arguments.size()) {
        const OptionRow& row = FindOption(arguments[next++]);
        std::wstring value;
        if (row.takesValue) {
            if (next == arguments.size()) RefuseUsage(std::wstring(row.name) + L" needs a value.");
            value = arguments[next++];
        }
        row.apply(options, value);
    }
    return options;
}

}  // namespace kvn::control_panel

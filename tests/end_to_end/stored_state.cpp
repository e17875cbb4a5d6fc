#include "tests/end_to_end/stored_state.h"

#include <shlobj.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "platform/unique_resource.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/narrow_text.h"

namespace kvn::end_to_end {
namespace {

constexpr wchar_t kVendorKey[] = L"Software\\KORVEN";
constexpr std::size_t kLongestName = 256;
constexpr std::size_t kLongestValue = 4096;

std::string ShowText(const std::wstring& text, std::size_t bytes) {
    std::string shown;
    for (const wchar_t character : text) shown += character == L'\0' ? "\\0" : test::Narrow({&character, 1});
    return '"' + shown + "\" in " + std::to_string(bytes) + " bytes";
}

std::string Show(DWORD type, const std::vector<BYTE>& data) {
    if (type == REG_DWORD && data.size() == sizeof(DWORD)) {
        DWORD number = 0;
        std::memcpy(&number, data.data(), sizeof number);
        return std::to_string(number);
    }
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
    const std::string shown = ShowText(text, data.size());
    return type == REG_SZ ? shown : "type " + std::to_string(type) + ": " + shown;
}

std::wstring ApplicationData() {
    std::array<wchar_t, MAX_PATH> path{};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path.data()))) {
        throw StoryError("the shell knows no folder for application data");
    }
    return path.data();
}

platform::UniqueFile Open(const std::wstring& path, DWORD access, DWORD disposition) {
    platform::UniqueFile file(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) throw StoryError("cannot open " + test::Narrow(path) + ", error " + std::to_string(GetLastError()));
    return file;
}

}  // namespace

RegistryValues ModelValues() {
    RegistryValues values;
    platform::UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kModelKey, 0, KEY_READ, key.Receive()) != ERROR_SUCCESS) return values;
    std::array<wchar_t, kLongestName> name{};
    std::vector<BYTE> data(kLongestValue);
    DWORD type = REG_NONE;
    auto length = static_cast<DWORD>(name.size());
    auto bytes = static_cast<DWORD>(data.size());
    for (DWORD index = 0;
         RegEnumValueW(key.Get(), index, name.data(), &length, nullptr, &type, data.data(), &bytes) == ERROR_SUCCESS;
         ++index) {
        values[test::Narrow({name.data(), length})] = Show(type, {data.begin(), data.begin() + bytes});
        length = static_cast<DWORD>(name.size());
        bytes = static_cast<DWORD>(data.size());
    }
    return values;
}

std::string UnterminatedText(const std::wstring& text) {
    return ShowText(text, text.size() * sizeof(wchar_t));
}

std::string TextList(const std::vector<std::wstring>& texts) {
    std::wstring block;
    for (const std::wstring& text : texts) block += text + L'\0';
    block += L'\0';
    return "type " + std::to_string(REG_MULTI_SZ) + ": " + ShowText(block, block.size() * sizeof(wchar_t));
}

void RemoveRegistryState() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kVendorKey);
}

std::wstring SettingsFolder() {
    return ApplicationData() + L"\\KORVEN\\Tarsel3\\";
}

void RemoveSettingsFolder() {
    RemoveFolder(SettingsFolder());
    RemoveFolder(ApplicationData() + L"\\KORVEN\\");
}

std::vector<std::wstring> FilesIn(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found{};
    const platform::UniqueFileSearch search(FindFirstFileW((folder + L'*').c_str(), &found));
    if (!search) return names;
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(found.cFileName);
    } while (FindNextFileW(search.Get(), &found));
    std::sort(names.begin(), names.end());
    return names;
}

void RemoveFolder(const std::wstring& folder) {
    for (const std::wstring& name : FilesIn(folder)) DeleteFileW((folder + name).c_str());
    RemoveDirectoryW(folder.c_str());
}

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string ReadFileBytes(const std::wstring& path) {
    const platform::UniqueFile file = Open(path, GENERIC_READ, OPEN_EXISTING);
    std::string bytes(GetFileSize(file.Get(), nullptr), '\0');
    DWORD read = 0;
    if (!ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr)) {
        throw StoryError("cannot read " + test::Narrow(path));
    }
    bytes.resize(read);
    return bytes;
}

void WriteFileBytes(const std::wstring& path, const std::string& bytes) {
    SHCreateDirectoryExW(nullptr, path.substr(0, path.find_last_of(L'\\')).c_str(), nullptr);
    const platform::UniqueFile file = Open(path, GENERIC_WRITE, CREATE_ALWAYS);
    DWORD written = 0;
    if (!WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
        throw StoryError("cannot write " + test::Narrow(path));
    }
}

TemporaryText::TemporaryText(HKEY rootKey, std::wstring keyPath, std::wstring valueName, const std::wstring& text)
    : root(rootKey), key(std::move(keyPath)), name(std::move(valueName)) {
    std::array<wchar_t, 1024> old{};
    DWORD bytes = sizeof old;
    if (RegGetValueW(root, key.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, old.data(), &bytes) == ERROR_SUCCESS) {
        before = old.data();
    }
    if (RegSetKeyValueW(root, key.c_str(), name.c_str(), REG_SZ, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) != ERROR_SUCCESS) {
        throw StoryError("cannot write the registry key " + test::Narrow(key));
    }
}

TemporaryText::~TemporaryText() {
    if (before) {
        RegSetKeyValueW(root, key.c_str(), name.c_str(), REG_SZ, before->c_str(),
                        static_cast<DWORD>((before->size() + 1) * sizeof(wchar_t)));
    } else {
        RegDeleteKeyValueW(root, key.c_str(), name.c_str());
    }
}

}  // namespace kvn::end_to_end

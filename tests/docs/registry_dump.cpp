#include "tests/docs/registry_dump.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "model/registry_values.h"
#include "platform/unique_resource.h"
#include "tests/end_to_end/story_waiting.h"
#include "tests/support/narrow_text.h"

namespace kvn::docs {
namespace {

using end_to_end::StoryError;
using model::RegistryType;

constexpr std::size_t kBytesOfRow = 16;
constexpr DWORD kLongestValue = 4096;

struct TypeRow {
    RegistryType type;
    const char* name;
};
constexpr std::array<TypeRow, 3> kTypes{{{RegistryType::String, "REG_SZ"},
                                         {RegistryType::Dword, "REG_DWORD"},
                                         {RegistryType::MultiString, "REG_MULTI_SZ"}}};

template <typename... Values>
std::string Format(const char* format, Values... values) {
    std::array<char, 128> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

std::string NameOfType(DWORD type) {
    const auto row = std::ranges::find(kTypes, static_cast<RegistryType>(type), &TypeRow::type);
    if (row == kTypes.end()) throw StoryError("a value of type " + std::to_string(type));
    return row->name;
}

// Nothing if the key has no such value.
std::optional<std::string> DumpValue(HKEY key, const wchar_t* name) {
    std::string bytes(kLongestValue, '\0');
    DWORD type = REG_NONE;
    DWORD size = kLongestValue;
    const LSTATUS status = RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &size);
    if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
    if (status != ERROR_SUCCESS) throw StoryError("cannot read " + test::Narrow(name));
    bytes.resize(size);
    return Format("%ls, %s, %lu bytes\n", name, NameOfType(type).c_str(), size) + DumpBytes(bytes);
}

}  // namespace

std::string DumpBytes(const std::string& bytes) {
    std::string dump;
    for (std::size_t start = 0; start < bytes.size(); start += kBytesOfRow) {
        const std::string row = bytes.substr(start, kBytesOfRow);
        std::string line = Format("    %04x ", static_cast<unsigned>(start));
        for (const char byte : row) line += Format(" %02x", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        line.resize(std::string("    0000 ").size() + 3 * kBytesOfRow, ' ');
        line += "  ";
        for (const char byte : row) line += byte > ' ' && byte <= '~' ? byte : '.';
        dump += line + '\n';
    }
    return dump;
}

std::string DumpKey(const std::wstring& path) {
    platform::UniqueRegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, key.Receive()) != ERROR_SUCCESS) {
        throw StoryError("there is no key " + test::Narrow(path));
    }
    std::string dump = "HKEY_CURRENT_USER\\" + test::Narrow(path) + '\n';
    DWORD found = 0;
    for (const model::RegistryValueRow& row : model::kRegistryValues) {
        const auto value = DumpValue(key.Get(), row.name);
        if (!value) continue;
        dump += '\n' + *value;
        ++found;
    }
    DWORD count = 0;
    RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr,
                     nullptr);
    if (count != found) throw StoryError(test::Narrow(path) + " holds a value that is not the page's");
    return dump;
}

}  // namespace kvn::docs

#include "tests/support/mouse_on_registry.h"
#include "platform/unique_resource.h"

#include <cstring>
#include <cwchar>

namespace kvn::test {
namespace {

StoredValue Stored(DWORD type, const void* data, std::size_t size) {
    StoredValue value{type, std::vector<BYTE>(size)};
    if (size != 0) std::memcpy(value.bytes.data(), data, size);
    return value;
}

}  // namespace

std::wstring PublishedMouse::Name() const {
    wchar_t name[32]{};
    std::swprintf(name, 32, L"VID%04lxPID%04lx", vid, pid);
    return name;
}

void SetPublishedNumber(const wchar_t* value, DWORD number) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kMouseKey, value, REG_DWORD, &number, sizeof number);
}

void PublishMouse(const PublishedMouse& mouse) {
    SetPublishedNumber(L"HasTilt", mouse.hasTilt);
    SetPublishedNumber(L"ButtonCount", mouse.buttonCount);
    SetPublishedNumber(L"VID", mouse.vid);
    SetPublishedNumber(L"PID", mouse.pid);
    SetPublishedNumber(L"MouseFlag", mouse.flag);
    RegSetKeyValueW(HKEY_CURRENT_USER, kMouseKey, L"MouseImage", REG_SZ, mouse.image.c_str(),
                    static_cast<DWORD>((mouse.image.size() + 1) * sizeof(wchar_t)));
}

void RemovePublished(const wchar_t* value) {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kMouseKey, value);
}

StoredValue StoredNumber(std::int32_t number) {
    return Stored(REG_DWORD, &number, sizeof number);
}

StoredValue StoredText(const std::wstring& text) {
    return Stored(REG_SZ, text.data(), text.size() * sizeof(wchar_t));
}

StoredValue StoredList(const std::wstring& block) {
    return Stored(REG_MULTI_SZ, block.data(), block.size() * sizeof(wchar_t));
}

std::map<std::wstring, StoredValue> StoredValues(const std::wstring& key) {
    std::map<std::wstring, StoredValue> values;
    platform::UniqueRegistryKey opened;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, opened.Receive()) != ERROR_SUCCESS) return values;
    std::vector<BYTE> buffer(65536);
    for (DWORD index = 0;; ++index) {
        wchar_t name[256]{};
        DWORD nameLength = 256;
        DWORD size = static_cast<DWORD>(buffer.size());
        DWORD type = REG_NONE;
        if (RegEnumValueW(opened.Get(), index, name, &nameLength, nullptr, &type, buffer.data(), &size) !=
            ERROR_SUCCESS)
            break;
        values[name] = Stored(type, buffer.data(), size);
    }
    return values;
}

}  // namespace kvn::test

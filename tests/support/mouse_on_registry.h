// The attached mouse as the service publishes it in the user's registry, and the model's values as the page leaves them
// there.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace kvn::test {

inline constexpr wchar_t kMouseKey[] = L"Software\\KORVEN\\MouseUtility";

struct PublishedMouse {
    DWORD hasTilt = 1;
    DWORD buttonCount = 5;
    DWORD vid = 0x0ABC;
    DWORD pid = 0x00A1;
    std::wstring image = L"Tarsel";
    DWORD flag = 0;

    // The model's name in the registry and on disk, and its key.
    std::wstring Name() const;
    std::wstring Key() const { return std::wstring(kMouseKey) + L"\\" + Name(); }
};

// The key of a published mouse that has the values above.
inline constexpr wchar_t kModelKey[] = L"Software\\KORVEN\\MouseUtility\\VID0abcPID00a1";

void PublishMouse(const PublishedMouse& mouse);
// Takes one of the published values away.
void RemovePublished(const wchar_t* value);
void SetPublishedNumber(const wchar_t* value, DWORD number);

// A value as it is stored.
struct StoredValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;

    friend bool operator==(const StoredValue&, const StoredValue&) = default;
};
StoredValue StoredNumber(std::int32_t number);
// Characters only: a text goes into the registry without its final zero.
StoredValue StoredText(const std::wstring& text);
StoredValue StoredList(const std::wstring& block);

// Every value of a key of the current user by its name; empty when there is no such key.
std::map<std::wstring, StoredValue> StoredValues(const std::wstring& key);

}  // namespace kvn::test

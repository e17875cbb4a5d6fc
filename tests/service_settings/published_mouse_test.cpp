#include "service/settings/published_mouse.h"

#include <gtest/gtest.h>

#include <windows.h>

#include "model/registry_records.h"
#include "tests/support/mouse_on_registry.h"
#include "tests/support/sandboxed_user.h"

namespace kvn::service {
namespace {

using kvn::test::StoredNumber;
using kvn::test::StoredValue;

class PublishedMouse : public testing::Test {
protected:
    const model::DeviceRecord mouse{
        .hasTilt = 1, .buttonCount = 7, .vid = 0x1234, .pid = 0xFFFF, .mouseImage = L"Sample", .mouseFlag = 3};

    static auto Values() { return kvn::test::StoredValues(kvn::test::kMouseKey); }

private:
    kvn::test::SandboxedUser user;
};

TEST_F(PublishedMouse, HasSixValuesOfTheirTypes) {
    ASSERT_TRUE(PublishMouse(mouse));
    StoredValue image = kvn::test::StoredText(std::wstring(L"Sample") + L'\0');
    image.type = REG_SZ;
    const std::map<std::wstring, StoredValue> expected{
        {L"HasTilt", StoredNumber(1)},   {L"ButtonCount", StoredNumber(7)}, {L"MouseImage", image},
        {L"MouseFlag", StoredNumber(3)}, {L"VID", StoredNumber(0x1234)},    {L"PID", StoredNumber(0xFFFF)}};
    EXPECT_EQ(Values(), expected);
}

TEST_F(PublishedMouse, IsReadByThePageAsItIs) {
    ASSERT_TRUE(PublishMouse(mouse));
    const auto read = model::ReadCurrentDevice();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->mouseImage, L"Sample");
    EXPECT_EQ(read->pid, 0xFFFFU);
}

TEST_F(PublishedMouse, TakesThePlaceOfValuesOfAnyType) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kvn::test::kMouseKey, L"VID", REG_SZ, L"text", 10);
    ASSERT_TRUE(PublishMouse(mouse));
    EXPECT_EQ(Values().at(L"VID"), StoredNumber(0x1234));
}

TEST_F(PublishedMouse, HasAPictureNameThatThePageCanRead) {
    model::DeviceRecord named = mouse;
    named.mouseImage = std::wstring(1000, L'x');
    ASSERT_TRUE(PublishMouse(named));
    const auto read = model::ReadCurrentDevice();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->mouseImage, std::wstring(model::kMaxMouseImageLength, L'x'));
}

// The values go first, and the ids come last: whoever reads in their order finds the others once the ids are there.
TEST_F(PublishedMouse, ComesWithItsIdsLast) {
    ASSERT_TRUE(PublishMouse(mouse));
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kvn::test::kMouseKey, 0, KEY_NOTIFY | KEY_QUERY_VALUE, &key),
              ERROR_SUCCESS);
    struct Publisher {
        static DWORD WINAPI Run(void* record) {
            for (int time = 0; time < 200; ++time) PublishMouse(*static_cast<const model::DeviceRecord*>(record));
            return 0;
        }
    };
    model::DeviceRecord copy = mouse;
    const HANDLE thread = CreateThread(nullptr, 0, Publisher::Run, &copy, 0, nullptr);
    const auto isThere = [key](const wchar_t* name) {
        return RegQueryValueExW(key, name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    };
    // In the order opposite to that of their writing: one that is there while the next one is missing was written
    // before it, or deleted after it.
    int seenWithoutIds = 0;
    while (WaitForSingleObject(thread, 0) == WAIT_TIMEOUT) {
        if (!isThere(L"PID") && isThere(L"MouseFlag")) ++seenWithoutIds;
    }
    CloseHandle(thread);
    RegCloseKey(key);
    EXPECT_GT(seenWithoutIds, 0);
}

TEST_F(PublishedMouse, IsNotPublishedWhereTheKeyCannotBeMade) {
    kvn::test::SandboxedUser another;
    // A value's key cannot be made below a key that was deleted.
    HKEY gone = nullptr;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Gone", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &gone, nullptr),
              ERROR_SUCCESS);
    RegDeleteKeyW(HKEY_CURRENT_USER, L"Gone");
    RegOverridePredefKey(HKEY_CURRENT_USER, gone);
    EXPECT_FALSE(PublishMouse(mouse));
    RegCloseKey(gone);
}

}  // namespace
}  // namespace kvn::service
